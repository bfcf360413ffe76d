// The geometry of an encounter: range, closing speed, aspect and closest approach of threat and target.
#include "encounter.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

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

Offset difference(const Offset& a, const Offset& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

Offset along(const Offset& from, const Offset& to, double part) {
    return {std::lerp(from.x, to.x, part), std::lerp(from.y, to.y, part), std::lerp(from.z, to.z, part)};
}

Offset fromTargetToThreat(const Sample& sample) {
    const Triple& threat = sample.threatPosition;
    const Triple& target = sample.targetPosition;
    return {threat[0] - target[0], threat[1] - target[1], threat[2] - target[2]};
}

// The target's x axis in the world: yaw about z, then pitch about y. Roll about x leaves it where it is.
Offset noseDirection(const Triple& attitudeDegrees) {
    const double pitch = attitudeDegrees[1] * std::numbers::pi / 180.0;
    const double yaw = attitudeDegrees[2] * std::numbers::pi / 180.0;
    return {std::cos(yaw) * std::cos(pitch), std::sin(yaw) * std::cos(pitch), -std::sin(pitch)};
}

double partOf(const Sample& earlier, const Sample& later, double t) {
    const double span = later.time - earlier.time;
    return span > 0.0 ? std::clamp((t - earlier.time) / span, 0.0, 1.0) : 0.0;
}

// `toThreat` may have any length; without one the aspect is 0.
double aspectDegrees(const Sample& earlier, const Sample& later, double part, const Offset& toThreat) {
    const double distance = length(toThreat);
    if (distance == 0.0)
        return 0.0;
    Triple attitude{};
    for (std::size_t i = 0; i < attitude.size(); ++i)
        attitude[i] = std::lerp(earlier.targetAttitude[i], later.targetAttitude[i], part);
    const double cosine = dot(noseDirection(attitude), toThreat) / distance;
    return std::acos(std::clamp(cosine, -1.0, 1.0)) * 180.0 / std::numbers::pi;
}

// The part of the interval, 0 to 1, at which a point that moves from `start` to `end` is nearest to the origin.
double nearestPart(const Offset& start, const Offset& end) {
    const Offset motion = difference(end, start);
    const double squaredLength = dot(motion, motion);
    return squaredLength > 0.0 ? std::clamp(-dot(start, motion) / squaredLength, 0.0, 1.0) : 0.0;
}

bool meetOn(const Sample& sample) {
    return sample.targetPosition == sample.threatPosition;
}

class ClosestApproachSearch {
public:
    void include(const Sample& sample) {
        const Offset end = fromTargetToThreat(sample);
        if (earlier_ != nullptr) {
            const Offset start = fromTargetToThreat(*earlier_);
            const double part = nearestPart(start, end);
            consider(std::lerp(earlier_->time, sample.time, part), length(along(start, end, part)));
        }
        consider(sample.time, length(end));
        earlier_ = &sample;
    }

    std::optional<ClosestApproach> closest;

private:
    void consider(double time, double range) {
        if (std::isfinite(range) && (!closest || range < closest->range))
            closest = ClosestApproach{time, range};
    }

    const Sample* earlier_ = nullptr;
};
} // namespace

Encounter encounterBetween(const Sample& earlier, const Sample& later, double t) {
    const Offset start = fromTargetToThreat(earlier);
    const Offset end = fromTargetToThreat(later);
    const double part = partOf(earlier, later, t);
    const Offset now = along(start, end, part);
    const Offset motion = difference(end, start);
    Encounter encounter;
    encounter.range = length(now);
    // Where they meet they have come, or go, along the motion.
    const double side = part > 0.0 ? -1.0 : 1.0;
    const Offset toThreat = encounter.range > 0.0 ? now : Offset{side * motion.x, side * motion.y, side * motion.z};
    const double distance = length(toThreat);
    const double span = later.time - earlier.time;
    if (span > 0.0 && distance > 0.0)
        encounter.closingSpeed = -dot(toThreat, motion) / (distance * span);
    encounter.aspectDegrees = aspectDegrees(earlier, later, part, toThreat);
    return encounter;
}

Encounter encounterOn(std::span<const Sample> samples, std::size_t index) {
    const Sample& sample = samples[index];
    const bool isLast = index + 1 == samples.size();
    if (index > 0 && (isLast || meetOn(sample)))
        return encounterBetween(samples[index - 1], sample, sample.time);
    return encounterBetween(sample, isLast ? sample : samples[index + 1], sample.time);
}

std::optional<Encounter> encounterAt(std::span<const Sample> samples, double t) {
    if (samples.empty() || !(t >= samples.front().time && t <= samples.back().time))
        return std::nullopt;
    const auto after = std::ranges::upper_bound(samples, t, {}, &Sample::time);
    const auto at = std::prev(after);
    if (at->time == t)
        return encounterOn(samples, static_cast<std::size_t>(at - samples.begin()));
    return encounterBetween(*at, *after, t);
}

std::optional<ClosestApproach> closestApproach(std::span<const Sample> samples) {
    ClosestApproachSearch search;
    for (const Sample& sample : samples)
        search.include(sample);
    return search.closest;
}
} // namespace sorvane
