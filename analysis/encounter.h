// The geometry of an encounter: range, closing speed, aspect and closest approach of threat and target.
#pragma once

#include <optional>

#include <QMap>

#include "keyframe.h"

class etxyz;

namespace sorvane {
// Threat against target at one time. Lengths are in the trajectory's units.
struct Encounter {
    double range = 0.0;         // distance of the two
    double closingSpeed = 0.0;  // units per second by which the range shrinks; negative while it grows
    double aspectDegrees = 0.0; // at the target, from its nose to the threat: 0 is nose-on, 180 tail-on
};

// The encounter at time t (seconds) of two bodies that move linearly from one sample to the other. Of two samples at
// one time, and where the two bodies meet, the closing speed is 0; where they meet the aspect is 0 as well.
Encounter encounterBetween(const keyframe& earlier, const keyframe& later, double t);

// The encounter at time t. On a sample the speed is that of the interval after it, on the last one that of the interval
// before it; outside the samples the first or last one answers. Needs at least one sample; O(log n).
Encounter encounterAt(const etxyz& engagement, double t);

struct ClosestApproach {
    double time = 0.0;  // seconds
    double range = 0.0; // the trajectory's units
};

// Where the two bodies come closest, exactly: each interval between samples is solved for the minimum of the distance
// of two linearly moving points. The earliest of equal ones; nothing when no sample has finite positions.
class ClosestApproachSearch {
public:
    // Takes the samples by ascending time. Each must live until the next one is taken.
    void include(const keyframe& sample);

    const std::optional<ClosestApproach>& result() const { return closest_; }

private:
    void consider(double time, double range);

    std::optional<ClosestApproach> closest_;
    const keyframe* earlier_ = nullptr;
};

std::optional<ClosestApproach> closestApproach(const QMap<double, keyframe>& samples);
} // namespace sorvane
