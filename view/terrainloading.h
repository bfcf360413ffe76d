// Loads terrain for a view that must not wait for it.
#pragma once

#include <chrono>
#include <set>
#include <span>

#include "terrain.h"

namespace sorvane {
// How far the loading of what is shown has come.
struct TerrainProgress {
    bool isThrough = true;  // with all, loaded or not
    bool hasLoaded = false; // something, since it was through the last time
    bool isRetry = false;   // of a tile that has failed before: nothing to tell of, and no cause for a new frame
    double share = 0.0;     // of all that is to be loaded; 0 as long as the first files are being read
};

// One tile after the other, so that what loading says comes in the order in which drawing would have loaded them, and
// what several terrains have in common is loaded once.
class TerrainLoading {
public:
    // Goes on until `until`, or until there is nothing to do but wait for files. One that fails is tried once, and once
    // more when the loading begins anew after it was through. Needs the context that the terrains are drawn in.
    TerrainProgress goOn(std::span<Terrain* const> shown, std::chrono::steady_clock::time_point until);

private:
    SubTerrain* next(std::span<Terrain* const> shown) const;

    // Compared, never asked: they may be gone.
    std::set<const SubTerrain*> tried_;  // and failed, since it was through the last time
    std::set<const SubTerrain*> failed_; // when they were last tried
    bool hasLoaded_ = false;
};
} // namespace sorvane
