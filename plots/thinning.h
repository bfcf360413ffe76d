// Leaves out the points of a line that can't be told apart on the screen.
#pragma once

#include <span>
#include <vector>

#include "plotdocument.h"

namespace sorvane {
// Appends the part of a line that shows between two times on so many columns of pixels: all points where they are few,
// else the first, the least, the greatest and the last of each column, in their order, and a gap where one begins. So
// no spike is lost. A line that goes on beyond the range is cut at its ends.
void appendThinned(
    std::span<const PlotPoint> line, const TimeRange& range, int columns, std::vector<PlotPoint>& thinned);
} // namespace sorvane
