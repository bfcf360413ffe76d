// A flare as an ellipsoid.
#pragma once

#include <array>

#include "keyframe.h"
#include "matrix.h"

namespace sorvane {
// The half axes of the ellipsoid as which a flare at that distance is drawn in radiance; one without a size is a sphere
// that is small in any picture.
std::array<float, 3> halfAxesOf(const flareKeyframe& flare, double distance);

// From a unit sphere to the ellipsoid about the flare's position.
Matrix<float> modelOf(const flareKeyframe& flare, const std::array<float, 3>& halfAxes);

// The area of an ellipsoid's outline from far away in direction `d`, of any length: for half axes a, b, c and a unit
// direction (u, v, w) along them π sqrt((b c u)² + (a c v)² + (a b w)²). After Vickers, "The projected areas of
// ellipsoids and cylinders", 1996.
double projectedArea(const flareKeyframe& flare, const std::array<float, 3>& halfAxes, const std::array<double, 3>& d);
} // namespace sorvane
