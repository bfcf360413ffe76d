// Conversion of 32-bit RGB pixels to planar YUV 4:2:0 in fixed-point arithmetic, without a library.
#pragma once

#include <cstddef>
#include <cstdint>

namespace sorvane {
// Converts an image whose pixels are four bytes in the order blue, green, red, unused, with rows `bytesPerLine` apart,
// by the studio-range equations of ITU-R BT.601. `width` and `height` are even. `planes` receives width · height bytes
// of Y, then a quarter as many each of Cb and Cr, rows packed; a chroma sample is the mean of its 2 × 2 pixels.
void convertBgrxToYuv420p(
    const std::uint8_t* pixels, std::ptrdiff_t bytesPerLine, std::size_t width, std::size_t height,
    std::uint8_t* planes);
} // namespace sorvane
