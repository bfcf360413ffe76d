// Cuts a piece out of a trajectory.
#pragma once

#include <optional>
#include <vector>

#include "exactsample.h"

namespace sorvane {
// The samples from time `from` to time `to`; without one, from the first or to the last. Between two samples an end
// gets a sample of its own, blended as the viewer blends, so that every time in between shows what it showed. With
// `from` the piece begins at time 0. The samples ascend in time; what is left may be none.
std::vector<ExactSample>
timeCut(const std::vector<ExactSample>& samples, std::optional<double> from, std::optional<double> to);
} // namespace sorvane
