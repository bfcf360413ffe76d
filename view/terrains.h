// The ground under the engagements.
#pragma once

#include <set>
#include <utility>

#include "etxyz.h"
#include "lookat.h"
#include "sight.h"

namespace sorvane {
// The terrains of a slice of a frame.
class SliceOfTerrains {
public:
    SliceOfTerrains(const LookAt& lookAt, const Sight& sight, const DepthSlice& slice)
        : lookAt_(lookAt), sight_(sight), slice_(slice) {}

    // Draws the tiles of the engagement's terrain that can be in the picture, with its ground under the threat's first
    // height; one that several engagements have at the same place once. Loads those that are not loaded. Adds an empty
    // sample at time 0 to an engagement that has none then. Needs the model-view matrix of the world.
    void draw(etxyz& engagement);

private:
    bool isWanted(const SubTerrain& tile, float firstThreatHeight);

    const LookAt& lookAt_;
    const Sight& sight_;
    const DepthSlice& slice_;
    std::set<std::pair<const TileContent*, float>> drawn_; // by the height under them
};
} // namespace sorvane
