// Writes an engagement as CZML.
#pragma once

#include <ostream>

#include "placedengagement.h"

namespace sorvane {
// A document packet with the engagement's clock, then a packet for each body and for each flare: sampled positions, in
// longitude and latitude in degrees and height in metres above the ellipsoid, and of the bodies the turn from the model
// (modelAxes) to the axes of the Earth. A flare has an interval of availability for each time that it burns. Samples
// that are on no map are left out.
void writeCzml(std::ostream& out, const PlacedEngagement& engagement);
} // namespace sorvane
