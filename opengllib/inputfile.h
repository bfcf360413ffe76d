// Opens the files that the program reads; every reader goes through here.
#pragma once

#include <cstdio>
#include <memory>
#include <optional>
#include <string>

namespace sorvane {
struct FileCloser {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

// Opens a regular file for reading and returns its descriptor, which the caller closes, or -1 when it can't be opened
// or is something else: a directory, a FIFO or a device could block the program or never end.
int openRegularFile(const std::string& path);

// The same as a C stream; null on failure.
FileHandle openInputFile(const std::string& path);

// At most the first `maximumBytes` bytes of a regular file; nothing when it can't be opened or read.
std::optional<std::string> readInputFile(const std::string& path, std::size_t maximumBytes);
} // namespace sorvane
