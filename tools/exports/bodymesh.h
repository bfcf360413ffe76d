// The facets of a body with their radiances, without a context to draw them in.
#pragma once

#include <string>
#include <vector>

#include "problem.h"

namespace sorvane {
struct BodyFiles {
    std::string reflectance;
    std::string geometry;
    std::string radiance;
};

// Three corners for each facet, as the viewer draws it: counter-clockwise as seen from outside. All numbers are finite.
struct BodyMesh {
    std::vector<float> positions; // x, y, z of each corner; x forwards, y to the left, z up
    std::vector<float> radiances; // of each corner, W/cm²/sr: what its facet sends out by itself
};

// Facets with a corner that is not finite are left out; they can't be drawn. Of files that the viewer could not draw,
// what is wrong with them.
Outcome<BodyMesh> loadBodyMesh(const BodyFiles& files);
} // namespace sorvane
