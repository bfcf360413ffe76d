// The tables and the atmosphere beside a terrain.
#pragma once

#include <array>
#include <string>

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
    static const std::array<std::string TerrainCompanions::*, 5> kAll;

    // Of both routes, without a raster of classes.
    ReflectanceFiles reflectanceFiles(const std::string& asterDirectory) const {
        return {"", classToAster, asterDirectory, band, classToMaterial, temperature};
    }
};

inline constexpr std::array<std::string TerrainCompanions::*, 5> TerrainCompanions::kAll = {
    &TerrainCompanions::atmosphere, &TerrainCompanions::band, &TerrainCompanions::classToAster,
    &TerrainCompanions::classToMaterial, &TerrainCompanions::temperature};

// Under the path `stem` with the ending of each.
TerrainCompanions companionsOf(const std::string& stem);
} // namespace sorvane
