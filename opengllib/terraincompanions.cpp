// The tables and the atmosphere beside a terrain.
#include "terraincompanions.h"

#include "atmfile.h"
#include "bandfile.h"
#include "cls2asterfile.h"
#include "loadclstomatfile.h"
#include "loadmaterialtables.h"

namespace sorvane {
TerrainCompanions companionsOf(const std::string& stem) {
    return {
        stem + "." + AtmFile::kExtension,       stem + "." + BandFile::kExtension,  stem + "." + CLS2ASTER_EXT,
        stem + "." + kClassToMaterialExtension, stem + "." + kTemperatureExtension,
    };
}
} // namespace sorvane
