// What a raster file holds, which follows from its ending.
#include "rastercontent.h"

#include "filechecks.h"
#include "loadclsfile.h"
#include "loadnormfile.h"
#include "loadradfile.h"
#include "rasterfamily.h"

namespace sorvane {
RasterContent rasterContentOf(const std::string& path) {
    if (topographyFamilyOf(path) != nullptr)
        return RasterContent::Topography;
    if (checkExtension(path, RAD_EXT))
        return RasterContent::Radiance;
    if (checkExtension(path, NORM_EXT))
        return RasterContent::Normals;
    return checkExtension(path, CLS_EXT) ? RasterContent::Classes : RasterContent::Unknown;
}

const char* nameOf(RasterContent content) {
    switch (content) {
    case RasterContent::Topography:
        return "topography";
    case RasterContent::Radiance:
        return "radiance";
    case RasterContent::Normals:
        return "normals";
    case RasterContent::Classes:
        return "classes";
    case RasterContent::Unknown:
        break;
    }
    return "unknown";
}
} // namespace sorvane
