// The geometry of an encounter: range, closing speed, aspect and closest approach of threat and target.
#include "encounter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "etxyz.h"

namespace sorvane {
namespace {
struct Offset {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

double dot(const Offset& a, const Offset& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

double length(const Offset& a) {
    return std::hypot(a.x, a.y, a.z);
}

Offset along(const Offset& from, const Offset& to, double part) {
    return {std::lerp(from.x, to.x, part), std::lerp(from.y, to.y, part), std::lerp(from.z, to.z, part)};
}

Offset fromTargetToThreat(const keyframe& sample) {
    const auto difference = [&](int axis) {
        return double{sample.threatPos[axis]} - double{sample.targetPos[axis]};
    };
    return {difference(0), difference(1), difference(2)};
}

// The target's x axis in the world: yaw about z, then pitch about y. Roll about x leaves it where it is.
Offset noseDirection(const double (&attitudeDegrees)[3]) {
    const double pitch = attitudeDegrees[1] * std::numbers::pi / 180.0;
    const double yaw = attitudeDegrees[2] * std::numbers::pi / 180.0;
    return {std::cos(yaw) * std::cos(pitch), std::sin(yaw) * std::cos(pitch), -std::sin(pitch)};
}

double partOf(const keyframe& earlier, const keyframe& later, double t) {
    const double span = later.time - earlier.time;
    return span > 0.0 ? std::clamp((t - earlier.time) / span, 0.0, 1.0) : 0.0;
}

double
aspectDegrees(const keyframe& earlier, const keyframe& later, double part, const Offset& toThreat, double range) {
    if (range == 0.0)
        return 0.0;
    double attitude[3];
    for (int i = 0; i < 3; ++i)
        attitude[i] = std::lerp(double{earlier.targetAtt[i]}, double{later.targetAtt[i]}, part);
    const double cosine = dot(noseDirection(attitude), toThreat) / range;
    return std::acos(std::clamp(cosine, -1.0, 1.0)) * 180.0 / std::numbers::pi;
}

// The part of the interval, 0 to 1, at which a point that moves from `start` to `end` is nearest to the origin.
double nearestPart(const Offset& start, const Offset& end) {
    const Offset motion{end.x - start.x, end.y - start.y, end.z - start.z};
    const double squaredLength = dot(motion, motion);
    return squaredLength > 0.0 ? std::clamp(-dot(start, motion) / squaredLength, 0.0, 1.0) : 0.0;
}
} // namespace

Encounter encounterBetween(const keyframe& earlier, const keyframe& later, double t) {
    const Offset start = fromTargetToThreat(earlier);
    const Offset end = fromTargetToThreat(later);
    const double part = partOf(earlier, later, t);
    const Offset now = along(start, end, part);
    Encounter encounter;
    encounter.range = length(now);
    const double span = later.time - earlier.time;
    if (span > 0.0 && encounter.range > 0.0) {
        const Offset motion{end.x - start.x, end.y - start.y, end.z - start.z};
        encounter.closingSpeed = -dot(now, motion) / (encounter.range * span);
    }
    encounter.aspectDegrees = aspectDegrees(earlier, later, part, now, encounter.range);
    return encounter;
}

Encounter encounterAt(const etxyz& engagement, double t) {
    const keyframe earlier = engagement.PreviousKeyframe(t);
    const keyframe later = engagement.NextKeyframe(t);
    if (earlier.time < later.time)
        return encounterBetween(earlier, later, t);
    // Before the first sample, or not before the last one.
    const bool isAtEnd = t >= earlier.time;
    const double outside = std::numeric_limits<double>::infinity();
    const double beyond = std::nextafter(earlier.time, isAtEnd ? -outside : outside);
    return isAtEnd ? encounterBetween(engagement.PreviousKeyframe(beyond), earlier, earlier.time)
                   : encounterBetween(earlier, engagement.NextKeyframe(earlier.time), earlier.time);
}

void ClosestApproachSearch::include(const keyframe& sample) {
    const Offset end = fromTargetToThreat(sample);
    if (earlier_ != nullptr) {
        const Offset start = fromTargetToThreat(*earlier_);
        const double part = nearestPart(start, end);
        consider(std::lerp(earlier_->time, sample.time, part), length(along(start, end, part)));
    }
    consider(sample.time, length(end));
    earlier_ = &sample;
}

void ClosestApproachSearch::consider(double time, double range) {
    if (std::isfinite(range) && (!closest_ || range < closest_->range))
        closest_ = ClosestApproach{time, range};
}

std::optional<ClosestApproach> closestApproach(const QMap<double, keyframe>& samples) {
    ClosestApproachSearch search;
    for (const keyframe& sample : samples)
        search.include(sample);
    return search.result();
}
} // namespace sorvane
