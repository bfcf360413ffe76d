// Writes an engagement as CZML.
#pragma once

#include <ostream>

#include "placedengagement.h"

namespace sorvane {
// A document packet with the clock, then a packet for each body with its sampled positions, in longitude and latitude
// in degrees and height in metres above the ellipsoid.
void writeCzml(std::ostream& out, const PlacedEngagement& engagement);
} // namespace sorvane
