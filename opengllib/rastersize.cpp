// How many columns and rows a raster file says it has.
#include "rastersize.h"

#include "bkgheader.h"
#include "filechecks.h"
#include "ghead.h"
#include "loadtopofile.h"

namespace {
std::optional<RasterSize> bkgSize(const std::string& path) {
    BKG_header header{};
    if (ReadHeader(path, header) == nullptr)
        return std::nullopt;
    return RasterSize{header.sizeX, header.sizeY};
}

std::optional<RasterSize> torvaleSize(const std::string& path) {
    GHead header{};
    if (ReadHeader(path, header) == nullptr)
        return std::nullopt;
    return RasterSize{header.ncols, header.nrows};
}
} // namespace

std::optional<RasterSize> readTopographySize(const std::string& path) {
    if (checkExtension(path, FTOP_EXT))
        return bkgSize(path);
    return checkExtension(path, TOPO_EXT) ? torvaleSize(path) : std::nullopt;
}

std::optional<RasterSize> readRasterSize(const std::string& path) {
    return CheckMORLAN(path) ? bkgSize(path) : torvaleSize(path);
}
