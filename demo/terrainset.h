// The demonstration's landscape with the reflectances of measured spectra.
#pragma once

#include <string>
#include <vector>

#include "atmosphere.h"
#include "demonstrationfile.h"

namespace sorvane {
// The description and one raster of the set, by which trajectories name it.
inline constexpr const char* kTerrainSetDescription = "ter0020/ter0020.xml";
inline constexpr const char* kTerrainSetRadiance = "ter0020/ter0020_w0001_t1500_b0001_n0001.rad";

// Description, the tiles' rasters, the table from classes to spectra, the spectra, the band and the atmosphere. The
// names begin with "ter0020/"; `root` is the absolute path of the folder above without a closing slash, where the
// description looks for the spectra.
std::vector<DemonstrationFile> terrainSetFiles(const std::string& root, const AtmosphereValues& atmosphere);
} // namespace sorvane
