// Writer of Truevision TGA images.
#include "tgafile.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace {
// Little-endian.
std::array<unsigned char, 18> header(int width, int height) {
    constexpr unsigned char kUncompressedTrueColour = 2;
    constexpr unsigned char kBitsPerPixel = 24;
    const auto low = [](int value) {
        return static_cast<unsigned char>(value & 0xFF);
    };
    const auto high = [](int value) {
        return static_cast<unsigned char>((value >> 8) & 0xFF);
    };
    return {
        0, // length of the image ID
        0, // no colour map
        kUncompressedTrueColour,
        0,
        0,
        0,
        0,
        0, // colour-map description
        0,
        0, // x origin
        0,
        0, // y origin
        low(width),
        high(width),
        low(height),
        high(height),
        kBitsPerPixel,
        0}; // no alpha bits, bottom row first
}
} // namespace

bool TgaFile::Write(const std::string& path, int width, int height, const unsigned char* bytes) {
    file_.reset(std::fopen(path.c_str(), "wb"));
    if (file_ == nullptr)
        return false;
    const auto head = header(width, height);
    std::fwrite(head.data(), 1, head.size(), file_.get());
    if (width > 0 && height > 0)
        std::fwrite(bytes, 3 * static_cast<std::size_t>(width), static_cast<std::size_t>(height), file_.get());
    file_.reset();
    return true;
}
