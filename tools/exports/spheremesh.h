// A ball of facets.
#pragma once

#include <vector>

namespace sorvane {
// x, y, z of three corners for each facet, counter-clockwise as seen from outside, on the unit sphere about the origin.
std::vector<float> unitSphereMesh();
} // namespace sorvane
