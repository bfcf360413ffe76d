// Writes an engagement as KML 2.2.
#pragma once

#include <ostream>

#include "placedengagement.h"

namespace sorvane {
// A folder for each body: its path as a line, which every reader shows, and its track over time in Google's extension,
// with the angles that turn a model (modelAxes). A folder of flares has a track for each time that one burns. Altitudes
// are absolute; samples that are on no map are left out.
void writeKml(std::ostream& out, const PlacedEngagement& engagement);
} // namespace sorvane
