// A sample of a trajectory with what it takes to write it again.
#pragma once

#include <string>

#include "sample.h"

namespace sorvane {
struct ExactSample : FlaredSample {
    std::string ignoredWords = "0 0"; // the two before the gyro, which no reader looks at
    std::string comments;             // the lines before and within the record, with their ends
};

// The sample at time t between two, blended as the viewer blends: linearly, angles too, flares by their ids; what is
// not blended is the earlier one's.
ExactSample blended(const ExactSample& earlier, const ExactSample& later, double t);

// The flare with this id, the last of several; null when there is none.
const Flare* findFlare(const ExactSample& sample, int id);
} // namespace sorvane
