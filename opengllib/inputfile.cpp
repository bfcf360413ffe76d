// Opens the files that the program reads; every reader goes through here.
#include "inputfile.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sorvane {
int openRegularFile(const std::string& path) {
    // Without O_NONBLOCK, opening a FIFO would wait for a writer; on a regular file it changes nothing.
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return -1;
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode)) {
        ::close(descriptor);
        return -1;
    }
    return descriptor;
}

FileHandle openInputFile(const std::string& path) {
    const int descriptor = openRegularFile(path);
    if (descriptor < 0)
        return nullptr;
    FileHandle stream(::fdopen(descriptor, "rb"));
    if (stream == nullptr)
        ::close(descriptor);
    return stream;
}

std::optional<std::string> readInputFile(const std::string& path, std::size_t maximumBytes) {
    const FileHandle stream = openInputFile(path);
    if (stream == nullptr)
        return std::nullopt;
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    std::string contents;
    while (contents.size() < maximumBytes) {
        const std::size_t before = contents.size();
        const std::size_t wanted = std::min(kPiece, maximumBytes - before);
        contents.resize(before + wanted);
        const std::size_t got = std::fread(contents.data() + before, 1, wanted, stream.get());
        contents.resize(before + got);
        if (got < wanted) {
            if (std::ferror(stream.get()) != 0)
                return std::nullopt;
            break;
        }
    }
    return contents;
}
} // namespace sorvane
