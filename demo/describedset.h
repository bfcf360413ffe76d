// The demonstration's landscape as a described set of tiles.
#pragma once

#include <string>
#include <vector>

#include "atmosphere.h"
#include "demonstrationfile.h"

namespace sorvane {
// The set's tiles lie side by side in a square; one more, far wider and coarser, carries the land on around it.
struct DescribedSet {
    const char* name = ""; // of the folder and of the description
    int tilesEachWay = 1;
    int posts = 0; // of a tile, each way; neighbours share the posts of their common edge
    double cellMetres = 0.0;
    double launchHeight = 0.0; // metres above the valley floor
    std::string spectra;       // the folder where the materials' spectra are, where there are any
};

// The description and the tiles' rasters. The names begin with the set's.
std::vector<DemonstrationFile> describedSetFiles(const DescribedSet& set, const AtmosphereValues& sun);
} // namespace sorvane
