// What an engagement comes to: the numbers that it has one of, and those that each flare has one of.
#pragma once

#include <optional>

#include "seekerfield.h"

namespace sorvane {
// The closest approach, less the noise of arithmetic.
ClosestApproach writtenClosestApproach(std::span<const Sample> samples, const ClosestApproach& closest);

// NaN is what is undefined.
struct EngagementResults {
    ClosestApproach closest;
    Encounter atClosest;
    double relativeSpeedAtClosest = 0.0; // units per second
    double firstFlareTime = 0.0;         // seconds
    FieldTimes field;
};

EngagementResults resultsOf(const MeasuredEngagement& engagement);
} // namespace sorvane
