// The demonstration's landscape sampled at the posts of a grid, as the rasters hold it.
#pragma once

#include <cstddef>
#include <vector>

#include "atmosphere.h"
#include "landscape.h"
#include "tuple3.h"

namespace sorvane {
// Posts from the one in the south-west on.
struct MapGrid {
    int columns = 0;
    int rows = 0;
    double cellMetres = 0.0;
    double west = 0.0; // metres
    double south = 0.0;
    int finer = 1; // a post's radiance is the mean of so many samples each way, in the cell around it
};

// Row by row from the south, each row from the west. All arrays have columns × rows entries.
struct LandscapeMap {
    MapGrid grid;
    std::vector<float> heights; // metres above the launch: negative
    std::vector<Tuple3<float>> normals;
    std::vector<GroundClass> classes;
    std::vector<float> radiances; // W/cm²/sr
};

// The valley floor lies `launchHeight` metres below height 0, the tops a little below it.
LandscapeMap mapOf(const MapGrid& grid, double launchHeight, const AtmosphereValues& sun);

// The part of a map with its south-west post at (firstColumn, firstRow).
LandscapeMap partOf(const LandscapeMap& map, int firstColumn, int firstRow, int columns, int rows);
} // namespace sorvane
