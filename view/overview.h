// The camera that shows a whole engagement.
#pragma once

#include <array>
#include <span>

#include "vector.h"

class etxyz;

namespace sorvane {
class Camera;

// Where the eye is and what it looks at, in world units.
struct Viewpoint {
    Vector<float> eye;
    Vector<float> centre;
};

// The nearest viewpoint, looking down from a side at a fixed angle, from which all points lie within a picture of
// width × height pixels with the full vertical field of view in degrees, and a little room is left round them. There is
// at least one point.
Viewpoint
viewpointOver(std::span<const std::array<double, 3>> points, double fieldOfViewDegrees, int width, int height);

// The same over the paths of an engagement, which has samples: both bodies and the flares.
Viewpoint overviewOf(const etxyz& engagement, double fieldOfViewDegrees, int width, int height);

// Whether all of the paths lies farther along the camera's line of sight than anything is drawn.
bool isBeyondSight(const etxyz& engagement, const Camera& camera);
} // namespace sorvane
