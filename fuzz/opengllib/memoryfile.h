// Fuzzed bytes as a regular file with a path, for readers that open their file themselves; and silence on standard
// output, where some of them print.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <sys/mman.h>
#include <unistd.h>

inline const bool outputIsSilent = [] {
    return std::freopen("/dev/null", "w", stdout) != nullptr;
}();

// One file in memory, overwritten by each input.
class MemoryFile {
public:
    MemoryFile() : descriptor_(::memfd_create("input", 0)) {
        if (descriptor_ < 0)
            std::abort();
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

    void write(const void* data, std::size_t size) const {
        if (::pwrite(descriptor_, data, size, 0) != static_cast<ssize_t>(size) ||
            ::ftruncate(descriptor_, static_cast<off_t>(size)) != 0)
            std::abort();
    }

private:
    int descriptor_;
};
