// What a body or a tile is made of: files as they are on disk, and values.
#include "contentkey.h"

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>

#include "file.h"

namespace sorvane {
void ContentKey::addFile(const std::string& path) {
    paths_.push_back(path);
    bytes_ += path;
    bytes_ += '\0';
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        status = {};
    addValues(status.st_dev, status.st_ino, status.st_size);
    for (const timespec& time : {status.st_mtim, status.st_ctim})
        addValues(time.tv_sec, time.tv_nsec);
}

bool ContentKey::names(const std::string& path) const {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return std::ranges::any_of(
        paths_, [&](const std::string& added) { return isSamePath(added, path) || isSamePath(added, folder); });
}
} // namespace sorvane
