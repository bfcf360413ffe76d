// What the fuzz targets of both raster families share.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>

namespace sorvane {
// Whether to pass over an input whose header asks for rows · columns samples. Loaders fill what a file lacks with
// zeros; memory for many, or a refusal of it, takes as long as thousands of other inputs: of such inputs one in 4,096
// runs.
inline bool isTooSlow(std::int64_t rows, std::int64_t columns, const std::uint8_t* data, std::size_t size) {
    constexpr std::int64_t kQuickSamples = 1 << 12;
    if (rows <= 0 || columns <= 0 || rows * columns <= kQuickSamples)
        return false;
    std::uint32_t hash = 2166136261U;
    for (std::size_t i = 0; i < size; ++i)
        hash = (hash ^ data[i]) * 16777619U;
    return (hash >> 8) % 4096 != 0;
}

// Touches values from one end to the other, so that the sanitizers see an array that is too small.
template <class T> void touch(T* values, std::int64_t rows, std::int64_t columns) {
    const std::unique_ptr<T[]> owned(values);
    const auto* const bytes = reinterpret_cast<const volatile unsigned char*>(values);
    if (bytes == nullptr || rows <= 0 || columns <= 0)
        return;
    const std::int64_t last = rows * columns * std::int64_t{sizeof(T)} - 1;
    unsigned sum = bytes[last];
    for (std::int64_t i = 0; i < last; i += 61)
        sum += bytes[i];
    if (sum == 0xFFFFFFFF)
        std::abort();
}
} // namespace sorvane
