// How many columns and rows a raster file says it has.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace sorvane {
struct RasterSize {
    std::int32_t columns = 0;
    std::int32_t rows = 0;

    bool operator==(const RasterSize&) const = default;
};

// From the header, of the family that the loaders would take the file for: a topography by its extension, every other
// raster by its first bytes. Nothing when there is no header to read; the loader then reports what is wrong.
std::optional<RasterSize> readTopographySize(const std::string& path);
std::optional<RasterSize> readRasterSize(const std::string& path);
} // namespace sorvane
