// Tells whether a file on disk is still the one that was read.
#pragma once

#include <cstdint>
#include <vector>

#include <QString>

namespace sorvane {
// A file's identity at one moment. All zero when there is none.
struct FileStamp {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t modifiedNanoseconds = 0;

    bool exists() const { return inode != 0; }
    bool operator==(const FileStamp&) const = default;
};

FileStamp fileStamp(const QString& path);

// Files by path, each with its stamp.
struct StampedFile {
    QString path;
    FileStamp stamp;

    bool operator==(const StampedFile&) const = default;
};
using StampedFiles = std::vector<StampedFile>;
} // namespace sorvane
