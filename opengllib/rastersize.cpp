// How many columns and rows a raster file says it has.
#include "rastersize.h"

#include "rasterfamily.h"

namespace sorvane {
namespace {
std::optional<RasterSize> sizeBy(const sorvane::RasterFamily& family, const std::string& path) {
    const sorvane::RasterHeader header = family.readHeader(path);
    return header.isUsable ? std::optional(header.size) : std::nullopt;
}
} // namespace

std::optional<RasterSize> readTopographySize(const std::string& path) {
    const sorvane::RasterFamily* const family = sorvane::topographyFamilyOf(path);
    return family == nullptr ? std::nullopt : sizeBy(*family, path);
}

std::optional<RasterSize> readRasterSize(const std::string& path) {
    return sizeBy(sorvane::familyByFirstBytes(path), path);
}
} // namespace sorvane
