// Conversion of 32-bit RGB pixels to planar YUV 4:2:0 in fixed-point arithmetic.
#include "yuvconversion.h"

namespace sorvane {
namespace {
constexpr int kFractionBits = 13;
constexpr int kLumaOffset = 135168;    // 16.5: the offset 16 and the half that rounds
constexpr int kChromaOffset = 1052672; // 128.5
constexpr std::size_t kBytesPerPixel = 4;

void convertLumaRow(const std::uint8_t* pixels, std::size_t width, std::uint8_t* y) {
    for (std::size_t x = 0; x < width; ++x) {
        const std::uint8_t* bgr = pixels + x * kBytesPerPixel;
        y[x] = static_cast<std::uint8_t>((2104 * bgr[2] + 4130 * bgr[1] + 802 * bgr[0] + kLumaOffset) >> kFractionBits);
    }
}

void convertChromaRow(
    const std::uint8_t* upper, const std::uint8_t* lower, std::size_t width, std::uint8_t* cb, std::uint8_t* cr) {
    for (std::size_t x = 0; x < width; x += 2) {
        const std::uint8_t* top = upper + x * kBytesPerPixel;
        const std::uint8_t* bottom = lower + x * kBytesPerPixel;
        const auto mean = [top, bottom](std::size_t channel) {
            return (top[channel] + top[channel + kBytesPerPixel] + bottom[channel] + bottom[channel + kBytesPerPixel] +
                    2) >>
                   2;
        };
        const int blue = mean(0);
        const int green = mean(1);
        const int red = mean(2);
        cb[x / 2] =
            static_cast<std::uint8_t>((-1214 * red - 2384 * green + 3598 * blue + kChromaOffset) >> kFractionBits);
        cr[x / 2] =
            static_cast<std::uint8_t>((3598 * red - 3013 * green - 585 * blue + kChromaOffset) >> kFractionBits);
    }
}
} // namespace

void convertBgrxToYuv420p(
    const std::uint8_t* pixels, std::ptrdiff_t bytesPerLine, std::size_t width, std::size_t height,
    std::uint8_t* planes) {
    std::uint8_t* cb = planes + width * height;
    std::uint8_t* cr = cb + width * height / 4;
    for (std::size_t y = 0; y < height; y += 2) {
        const std::uint8_t* upper = pixels + static_cast<std::ptrdiff_t>(y) * bytesPerLine;
        const std::uint8_t* lower = upper + bytesPerLine;
        convertLumaRow(upper, width, planes + y * width);
        convertLumaRow(lower, width, planes + (y + 1) * width);
        const std::size_t chromaRow = width * (y / 2) / 2;
        convertChromaRow(upper, lower, width, cb + chromaRow, cr + chromaRow);
    }
}
} // namespace sorvane
