// Where a converted trajectory lies: origin, unit of length, axes.
#pragma once

#include <optional>
#include <vector>

#include "axes.h"
#include "exactsample.h"

namespace sorvane {
struct Placement {
    Triple origin{};    // in the file's units and axes
    double scale = 1.0; // of lengths
    std::optional<Axes> axes;
    // The bearing of the new x, for angles that are roll, pitch and compass heading whatever the axes are.
    std::optional<double> headingOfX;
};

// Moves, scales and turns, in this order. Flares look as before: brightness goes with the square of lengths.
void place(std::vector<ExactSample>& samples, const Placement& placement);

// Whether all numbers that the viewer keeps in single precision fit into it.
bool fitsSinglePrecision(const std::vector<ExactSample>& samples);
} // namespace sorvane
