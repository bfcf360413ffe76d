// Writes an engagement as KML 2.2.
#pragma once

#include <ostream>

#include "placedengagement.h"

namespace sorvane {
// A folder for each body: its path as a line, which every reader shows, and its track over time in Google's extension.
// Altitudes are absolute.
void writeKml(std::ostream& out, const PlacedEngagement& engagement);
} // namespace sorvane
