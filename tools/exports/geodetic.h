// Places the positions of a trajectory on the Earth.
#pragma once

#include "sample.h"

namespace sorvane {
// On the WGS-84 ellipsoid.
struct GeodeticPosition {
    double latitudeDegrees = 0.0;
    double longitudeDegrees = 0.0;
    double height = 0.0; // metres above the ellipsoid
};

// A trajectory's axes at a place: x and y in the plane that touches the ellipsoid's surface there, y 90 degrees to the
// right of x as seen from above, z down.
class LocalFrame {
public:
    // x points to `xBearingDegrees` from north towards east.
    LocalFrame(const GeodeticPosition& origin, double xBearingDegrees, double metresPerUnit);

    GeodeticPosition positionOf(const Triple& units) const;

private:
    double origin_[3] = {};  // metres from the Earth's centre: towards 0° N 0° E, 0° N 90° E and the north pole
    double axes_[3][3] = {}; // x, y and z in the same directions, as long as a unit
};
} // namespace sorvane
