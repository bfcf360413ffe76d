// The ground under the engagements.
#pragma once

#include <optional>
#include <set>
#include <utility>

#include "etxyz.h"
#include "lookat.h"
#include "sight.h"

namespace sorvane {
// The terrains of a slice of a frame.
class SliceOfTerrains {
public:
    // `loads` what is not loaded, or leaves it out. Radiances are multiplied by `brightness`, or by what makes greys of
    // them.
    SliceOfTerrains(
        const LookAt& lookAt, const Sight& sight, const DepthSlice& slice, bool loads,
        const std::optional<float>& brightness = {})
        : lookAt_(lookAt), sight_(sight), slice_(slice), loads_(loads), brightness_(brightness) {}

    // Draws what of the tiles of the engagement's terrain can be in the picture, with its ground under the threat's
    // first height; a tile that several engagements have at the same place once. Adds an empty sample at time 0 to an
    // engagement that has none then. Needs the model-view matrix of the world.
    void draw(etxyz& engagement);

private:
    bool isInSight(const TileBounds& bounds, float firstThreatHeight) const;

    const LookAt& lookAt_;
    const Sight& sight_;
    const DepthSlice& slice_;
    bool loads_;
    std::optional<float> brightness_;
    std::set<std::pair<const TileContent*, float>> drawn_; // by the height under them
};
} // namespace sorvane
