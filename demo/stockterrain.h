// The demonstration's landscape under the names of the stock terrain.
#pragma once

#include <vector>

#include "atmosphere.h"
#include "demonstrationfile.h"

namespace sorvane {
// As a described set, and as single rasters of the old style, which are drawn where the description is taken away:
// topography, radiance, normals and classes of each, the tables of the classes' materials, and the atmosphere. The
// names begin with "ter0010/".
std::vector<DemonstrationFile> stockTerrainFiles(const AtmosphereValues& atmosphere);
} // namespace sorvane
