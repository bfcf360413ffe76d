// The demonstration's landscape as single rasters of the old style.
#pragma once

#include <vector>

#include "atmosphere.h"
#include "demonstrationfile.h"

namespace sorvane {
// Topography, radiance, normals, classes, the tables of the classes' materials, and the atmosphere. The names begin
// with "ter0010/".
std::vector<DemonstrationFile> oldStyleTileFiles(const AtmosphereValues& atmosphere);
} // namespace sorvane
