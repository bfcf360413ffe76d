// The state of threat and target at one time, on a sample or between two, and the geometry of the two.
#pragma once

#include <cstddef>

#include "triples.h"

namespace sorvane {
// A place in the interval between two samples, through which both bodies move linearly. `sample` is the last sample not
// after the time. On a sample the interval is the one after it, on the last sample the one before; of a single sample
// both ends are that one.
struct Moment {
    const Sample* earlier = nullptr;
    const Sample* later = nullptr;
    double part = 0.0; // of the interval, 0 to 1
    std::size_t sample = 0;
    bool isOnSample = true;

    double time() const { return blended(earlier->time, later->time, part); }
    double seconds() const { return later->time - earlier->time; }
};

inline Triple fromTargetToThreat(const Sample& sample) {
    return difference(sample.threatPosition, sample.targetPosition);
}

inline Triple blended(const Moment& moment, Triple Sample::*member) {
    return blended(moment.earlier->*member, moment.later->*member, moment.part);
}

// Of the differences, not a difference of the blended: far from the origin that keeps digits.
inline Triple fromTargetToThreat(const Moment& moment) {
    return blended(fromTargetToThreat(*moment.earlier), fromTargetToThreat(*moment.later), moment.part);
}

// By how much the threat moves against the target within the interval.
inline Triple relativeMotion(const Moment& moment) {
    return difference(fromTargetToThreat(*moment.later), fromTargetToThreat(*moment.earlier));
}

// Units per second, NaN of a single sample, as the next one.
inline Triple relativeVelocity(const Moment& moment) {
    return scaled(relativeMotion(moment), 1.0 / moment.seconds());
}

inline Triple threatVelocity(const Moment& moment) {
    return scaled(difference(moment.later->threatPosition, moment.earlier->threatPosition), 1.0 / moment.seconds());
}

// The direction from which the target sees the threat; where they meet, that from which it came, or at the interval's
// begin that into which it goes. No length if the two stay together.
inline Triple directionToThreat(const Moment& moment) {
    const Triple toThreat = fromTargetToThreat(moment);
    if (length(toThreat) > 0.0)
        return toThreat;
    return scaled(relativeMotion(moment), moment.part > 0.0 ? -1.0 : 1.0);
}

// A direction d of the world in the target's body axes: x ahead, y to the right, z down.
inline Triple inTargetAxes(const Moment& moment, const Triple& d) {
    const Triple angles = blended(moment, &Sample::targetAttitude);
    const double roll = angles[0] / kDegreesPerRadian;
    const double pitch = angles[1] / kDegreesPerRadian;
    const double yaw = angles[2] / kDegreesPerRadian;
    // Back by yaw about z, by pitch about y, by roll about x.
    const double ahead = d[0] * std::cos(yaw) + d[1] * std::sin(yaw);
    const double right = d[1] * std::cos(yaw) - d[0] * std::sin(yaw);
    const double down = ahead * std::sin(pitch) + d[2] * std::cos(pitch);
    return {
        ahead * std::cos(pitch) - d[2] * std::sin(pitch), right * std::cos(roll) + down * std::sin(roll),
        down * std::cos(roll) - right * std::sin(roll)};
}

// Units per second by which the range shrinks; NaN of a single sample and of two that stay together.
inline double closingSpeed(const Moment& moment) {
    const Triple toThreat = directionToThreat(moment);
    return -dot(toThreat, relativeMotion(moment)) / (length(toThreat) * moment.seconds());
}

// Degrees, at the target, from its nose to the threat; NaN of two that stay together.
inline double aspect(const Moment& moment) {
    return degreesBetween(xAxis(blended(moment, &Sample::targetAttitude)), directionToThreat(moment));
}
} // namespace sorvane
