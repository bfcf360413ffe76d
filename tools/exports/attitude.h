// Which way a body points: the directions of its axes, and quaternions.
#pragma once

#include <array>

#include "sample.h"

namespace sorvane {
// The unit directions of a body's x, y and z axis.
using Axes = std::array<Triple, 3>;

// In the trajectory's axes, whose z points down, as the viewer lays models: with all angles (roll, pitch and yaw in
// degrees) 0, x points forwards, y to the left and z up.
Axes modelAxes(const Triple& anglesDegrees);

// x, y, z, w, of unit length.
using Quaternion = std::array<double, 4>;

// Turns x, y and z into the axes, which are right-handed. Of the two that do, the one whose w is not negative.
Quaternion quaternionOf(const Axes& axes);

// The same turn with the sign that is nearer to `previous`, so that what blends the two goes the short way.
Quaternion nearerTo(const Quaternion& previous, const Quaternion& next);

// In KML's way: from a model whose y points north and z up, clockwise as seen against the axes y (roll), x (tilt) and
// z (heading), in this order.
struct MapAngles {
    double headingDegrees = 0.0; // 0 to 360
    double tiltDegrees = 0.0;    // -90, the nose up, to 90
    double rollDegrees = 0.0;    // -180 to 180
};

// Of a body with these axes, by the directions of east, north and up.
MapAngles mapAnglesOf(const Axes& axes, const Axes& horizon);
} // namespace sorvane
