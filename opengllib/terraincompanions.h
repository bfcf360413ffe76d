// The tables and the atmosphere beside a terrain.
#pragma once

#include <string>
#include <vector>

#include "terrainreflectance.h"

namespace sorvane {

// What all tiles of a set share, or a single tile has to itself; each may be missing.
struct TerrainCompanions {
    std::string atmosphere;
    std::string band;
    std::string classToAster;
    std::string classToMaterial;
    std::string temperature;

    // In the order in which descriptions list them.
    std::vector<std::string> all() const;

    // Of both routes, without a raster of classes.
    ReflectanceFiles reflectanceFiles(const std::string& asterDirectory) const {
        return {"", classToAster, asterDirectory, band, classToMaterial, temperature};
    }
};

// Under the path `stem` with the ending of each.
TerrainCompanions companionsOf(const std::string& stem);

} // namespace sorvane
