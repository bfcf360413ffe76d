// What a raster file holds, which follows from its ending.
#pragma once

#include <string>

namespace sorvane {
enum class RasterContent { Topography, Radiance, Normals, Classes, Unknown };

RasterContent rasterContentOf(const std::string& path);

// As records name it: "topography", …, "unknown".
const char* nameOf(RasterContent content);
} // namespace sorvane
