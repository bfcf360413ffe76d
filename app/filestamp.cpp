// Tells whether a file on disk is still the one that was read.
#include "filestamp.h"

#include <sys/stat.h>

#include <QFile>

namespace sorvane {
FileStamp fileStamp(const QString& path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    constexpr std::int64_t kNanosecondsPerSecond = 1000000000;
    return {
        .device = status.st_dev,
        .inode = status.st_ino,
        .size = status.st_size,
        .modifiedNanoseconds = status.st_mtim.tv_sec * kNanosecondsPerSecond + status.st_mtim.tv_nsec};
}
} // namespace sorvane
