// Tells compressed data, which the viewer reads only from names that end in ".Z".
#include "compression.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "inputfile.h"

namespace sorvane {
namespace {
struct Mark {
    std::string_view bytes; // in front of the data
    const char* program;
};

constexpr Mark kMarks[] = {
    {"\x1F\x9D", "compress"},
    {"\x1F\x8B", "gzip"},
    {"BZh", "bzip2"},
    {"\xFD"
     "7zXZ",
     "xz"},
    {"\x28\xB5\x2F\xFD", "zstd"},
    {"PK\x03\x04", "zip"},
};
} // namespace

std::optional<Problem> problemOfCompression(std::string_view head, const std::string& path) {
    const auto* const mark =
        std::ranges::find_if(kMarks, [&](const Mark& each) { return head.starts_with(each.bytes); });
    if (mark == std::end(kMarks) || path.ends_with(".Z"))
        return std::nullopt;
    const std::string is = std::string("is compressed by ") + mark->program;
    if (path == "-")
        return Problem(is + ": decompress it before, as in uncompress -c FILE | sorvane info -");
    if (mark == std::begin(kMarks))
        return Problem(is + ", but its name does not end in .Z");
    return Problem(is + ", which the viewer does not read");
}

std::optional<Problem> problemOfCompression(const std::string& path) {
    const FileHandle stream = openInputFile(path);
    std::array<char, 8> head{};
    const std::size_t length = stream == nullptr ? 0 : std::fread(head.data(), 1, head.size(), stream.get());
    return problemOfCompression(std::string_view(head.data(), length), path);
}
} // namespace sorvane
