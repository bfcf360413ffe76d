// How fast a body moves and turns, from its positions alone.
#pragma once

#include <cstddef>
#include <span>

#include "sample.h"

namespace sorvane {
using BodyPosition = Triple Sample::*; // &Sample::threatPosition, …

// Units per second on a sample: the derivative of the parabola through it and its two neighbours (for even steps the
// central difference), on the first and the last sample that of the only interval. NaN of a single sample. A last digit
// of 0.001 units and steps of 0.01 s leave an error of at most 0.1 units/s.
double speedOn(std::span<const Sample> samples, BodyPosition position, std::size_t index);

// Neighbours in time that curvature is told by. Second differences of neighbouring samples would be mostly the rounding
// of their last digits: over 0.1 s to either side a last digit of 0.001 units leaves at most 0.2 units/s².
inline constexpr double kTurnSeconds = 0.1;

// The acceleration across the path on a sample, units per second squared: v²/r of the circle through the positions
// there and on the nearest samples at least kTurnSeconds before and after, v being the arc between these over its time.
// Exact on a circle at any step. NaN where there is no such sample, and of a body at rest.
double lateralAccelerationOn(std::span<const Sample> samples, BodyPosition position, std::size_t index);
} // namespace sorvane
