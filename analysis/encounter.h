// The geometry of an encounter: range, closing speed, aspect and closest approach of threat and target.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "moment.h"

namespace sorvane {
// Threat against target at one time. Lengths are in the trajectory's units.
struct Encounter {
    double range = 0.0;         // distance of the two
    double closingSpeed = 0.0;  // units per second by which the range shrinks; negative while it grows
    double aspectDegrees = 0.0; // at the target, from its nose to the threat: 0 is nose-on, 180 tail-on
};

// Samples, in each function here, ascend in time.

// The moment on a sample. Where the bodies meet, its interval is the one before it, too.
Moment momentOn(std::span<const Sample> samples, std::size_t index);
// The moment at time t. Nothing before the first sample and after the last one, nor for NaN. O(log n).
std::optional<Moment> momentAt(std::span<const Sample> samples, double t);

// The encounter at a moment. Where the bodies meet, speed and aspect are those just before; at the first sample, where
// nothing is before, those just after. Of a single sample, and of bodies that stay together, the speed is 0, of the
// latter the aspect as well.
Encounter encounterAt(const Moment& moment);

// The encounter on a sample. The speed is that of the interval after it; on the last sample, and where the bodies meet,
// that of the interval before it.
Encounter encounterOn(std::span<const Sample> samples, std::size_t index);

// The encounter at time t. Nothing before the first sample and after the last one. O(log n).
std::optional<Encounter> encounterAt(std::span<const Sample> samples, double t);

struct ClosestApproach {
    double time = 0.0;  // seconds
    double range = 0.0; // the trajectory's units
};

// Where the two bodies come closest, exactly: each interval between samples is solved for the minimum of the distance
// of two linearly moving points. The earliest of equal ones; nothing when no sample has finite positions.
std::optional<ClosestApproach> closestApproach(std::span<const Sample> samples);
} // namespace sorvane
