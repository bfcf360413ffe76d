// Reads a curve between its points.
#pragma once

#include <optional>

#include "plotdocument.h"

namespace sorvane {
// Linear between two points, nothing in a gap and before the first and after the last point of each line; of several
// lines the first one that has a value. The plot reads what it has drawn.
std::optional<double> valueOf(const PlotCurve& curve, double time);
} // namespace sorvane
