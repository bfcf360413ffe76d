// What lies in the seeker's field of view, a cone about the gyro's axis: geometry, not what the seeker goes by.
#pragma once

#include <optional>
#include <vector>

#include "measuredengagement.h"

namespace sorvane {
struct FieldObject {
    std::optional<std::size_t> track; // of a flare; nothing for the target
    double offBoresightDegrees = 0.0;
};

// The object in the field that is nearest to its axis by angle, of equal ones the target, then the flare that is listed
// first; nothing when the field is empty.
std::optional<FieldObject> nearestToAxis(const MeasuredEngagement& engagement, const Moment& moment);

// The brightnesses of all flares in the field, added up.
double flareBrightnessInField(const MeasuredEngagement& engagement, const Moment& moment);

struct FieldTimes {
    double target = 0.0;        // seconds in the field
    std::vector<double> flares; // by track
    // Of the samples, the last one on which the target was nearest to the axis.
    std::optional<double> targetLastNearest;
    // Whether a flare was nearest on the last sample with anything in the field; nothing when there is none.
    std::optional<bool> isDecoyed;
};

// Between two samples the angle from the axis is taken to change evenly, which tells when an object enters or leaves.
FieldTimes fieldTimes(const MeasuredEngagement& engagement);
} // namespace sorvane
