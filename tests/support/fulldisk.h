// Lets writes fail as on a full disk.
#pragma once

#include <sys/resource.h>

// While one lives, no file of the process can grow beyond some bytes.
struct FullDisk {
    explicit FullDisk(rlim_t bytes) {
        ::getrlimit(RLIMIT_FSIZE, &before);
        const rlimit little{bytes, before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &little);
    }
    ~FullDisk() { ::setrlimit(RLIMIT_FSIZE, &before); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

    rlimit before{};
};
