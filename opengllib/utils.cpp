// Image utilities: turning images upside down, grey pictures of float rasters, and clamping.
#include "utils.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

#include "cnumericlocale.h"
#include "endprocess.h"
#include "fail.h"
#include "messages.h"
#include "tgafile.h"

using namespace sorvane;

namespace {
template <class T> void swapRows(unsigned long width, unsigned long height, T* data) {
    for (unsigned long row = 0; row < height / 2; ++row) {
        T* upper = data + row * width;
        std::swap_ranges(upper, upper + width, data + (height - 1 - row) * width);
    }
}

unsigned char greyLevel(float value) {
    if (!(value >= 0.0F)) // NaN as well
        return 0;
    if (value > 1.0F)
        return 255;
    return static_cast<unsigned char>(value * 255.0F);
}

// width · 3 · height bytes, or null when there is no memory for so many.
std::unique_ptr<unsigned char[]> allocateRgb(unsigned long width, unsigned long height) {
    if (width != 0 && height > PTRDIFF_MAX / 3 / width)
        return nullptr;
    return std::unique_ptr<unsigned char[]>(new (std::nothrow) unsigned char[width * 3 * height]);
}
} // namespace

void SwapRowOrder(unsigned long width, unsigned long height, float* data) {
    swapRows(width, height, data);
}

void SwapRowOrderChar(unsigned long width, unsigned long height, char* data) {
    swapRows(width, height, data);
}

void Float32ToRGB8(
    const float* src, unsigned char* dst, unsigned long srcWidth, unsigned long srcHeight, unsigned long width,
    unsigned long height) {
    if (width > srcWidth) {
        fail(
            __func__, "Destination width must be less than source width, but dest_width = %d and source_width = %d",
            static_cast<int>(width), static_cast<int>(srcWidth));
        endProcess();
    }
    if (height > srcHeight) {
        fail(
            __func__, "Destination height must be less than source height, but dest_height = %d and source_height = %d",
            static_cast<int>(height), static_cast<int>(srcHeight));
        endProcess();
    }
    for (unsigned long row = 0; row < height; ++row)
        for (unsigned long column = 0; column < width; ++column) {
            const unsigned char level = greyLevel(src[row * srcWidth + column]);
            dst = std::fill_n(dst, 3, level);
        }
}

bool Snapshot(
    const float* data, const std::string& path, unsigned long srcWidth, unsigned long srcHeight, unsigned long width,
    unsigned long height) {
    const auto pBytes = allocateRgb(width, height);
    if (pBytes == nullptr) {
        const int count = static_cast<int>(width * 3 * height);
        return fail(__func__, "Could not allocate %d unsigned chars (%d bytes) for array pBytes.", count, count);
    }
    Float32ToRGB8(data, pBytes.get(), srcWidth, srcHeight, width, height);
    TgaFile file;
    if (!file.Write(path, static_cast<int>(width), static_cast<int>(height), pBytes.get()))
        printMessage("FboTerrain::Snapshot: Error writing snapshot file.");
    return true;
}

float ClampToRange(float x, float x1, float x2) {
    if (x1 > x2) {
        const CNumericLocale decimalPoint;
        fail(
            __func__, "Parameters must satisfy x1 <= x2, but x1 = %f and x2 = %f", static_cast<double>(x1),
            static_cast<double>(x2));
        endProcess();
    }
    return x < x1 ? x1 : x > x2 ? x2 : x;
}
