// What an engagement comes to: the numbers that it has one of, and those that each flare has one of.
#pragma once

#include <limits>
#include <optional>

#include "seekerfield.h"

namespace sorvane {
// The closest approach, less the noise of arithmetic.
ClosestApproach writtenClosestApproach(std::span<const Sample> samples, const ClosestApproach& closest);

// Of target and flares; all undefined without the engagement's radiometry. NaN is what is undefined, in both.
struct RadiometricResults {
    double meanIntensity = std::numeric_limits<double>::quiet_NaN();         // of the target, W/sr
    double intensityAtFirstFlare = std::numeric_limits<double>::quiet_NaN(); // likewise
    double greatestRatio = std::numeric_limits<double>::quiet_NaN();         // of flares in the field to the target
    double greatestRatioTime = std::numeric_limits<double>::quiet_NaN();     // seconds
    double outshoneTime = std::numeric_limits<double>::quiet_NaN();          // when that ratio first exceeds 1, seconds
};

struct EngagementResults {
    ClosestApproach closest;
    Encounter atClosest;
    double relativeSpeedAtClosest = 0.0; // units per second
    double firstFlareTime = 0.0;         // seconds
    FieldTimes field;
    RadiometricResults radiometric{};
};

EngagementResults resultsOf(const MeasuredEngagement& engagement);
} // namespace sorvane
