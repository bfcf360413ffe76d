// Places the positions of a trajectory on the Earth.
#pragma once

#include "attitude.h"
#include "sample.h"

namespace sorvane {
// On the WGS-84 ellipsoid.
struct GeodeticPosition {
    double latitudeDegrees = 0.0;
    double longitudeDegrees = 0.0;
    double height = 0.0; // metres above the ellipsoid
};

// False where numbers have overflowed, and beyond what a map can show.
bool isOnMap(const GeodeticPosition& position);

// The directions of east, north and up there, as seen from the Earth's centre: towards 0° N 0° E, 0° N 90° E and the
// north pole.
Axes horizonAt(const GeodeticPosition& position);

// A trajectory's axes at a place: x and y in the plane that touches the ellipsoid's surface there, y 90 degrees to the
// right of x as seen from above, z down.
class LocalFrame {
public:
    // x points to `xBearingDegrees` from north towards east.
    LocalFrame(const GeodeticPosition& origin, double xBearingDegrees, double metresPerUnit);

    GeodeticPosition positionOf(const Triple& units) const;
    // Axes in the trajectory's directions as they are in those of horizonAt.
    Axes turned(const Axes& axes) const;

private:
    double origin_[3] = {};  // metres from the Earth's centre, in the directions of horizonAt
    double axes_[3][3] = {}; // x, y and z in the same directions, as long as a unit
    double metresPerUnit_;
};
} // namespace sorvane
