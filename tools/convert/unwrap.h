// Lets angles run on beyond a half turn.
#pragma once

#include <vector>

#include "exactsample.h"

namespace sorvane {
// Adds full turns to each angle of the bodies, the gyro and the flares that jumps by more than a half turn from one
// sample to the next, so that it turns the short way round between them. The samples ascend in time.
void unwrapAngles(std::vector<ExactSample>& samples);
} // namespace sorvane
