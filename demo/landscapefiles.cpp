// All files of the demonstration's landscape.
#include "landscapefiles.h"

#include "stockterrain.h"
#include "terrainset.h"

namespace sorvane {
namespace {
// A hazy summer afternoon in the mid-wave infrared. Terrain has z up and y north, the bodies above it have z down and
// y the other way: the sun's azimuth is 180 degrees minus that in the bodies' atmosphere, so that both are lit from the
// same side.
constexpr AtmosphereValues kAfternoon = {
    .solarZenith = 50.0,
    .solarAzimuth = 305.0,
    .diffuseEarthRadiance = 1.9,
    .diffuseSkyRadiance = 0.65,
    .directSolarRadiance = 1.7,
    .signatureBearing = 0.0,
};
} // namespace

std::vector<DemonstrationFile> landscapeFiles(const std::string& dataRoot) {
    std::vector<DemonstrationFile> files = stockTerrainFiles(kAfternoon);
    for (DemonstrationFile& file : terrainSetFiles(dataRoot, kAfternoon))
        files.push_back(std::move(file));
    for (DemonstrationFile& file : files)
        file.name.insert(0, "data/");
    return files;
}
} // namespace sorvane
