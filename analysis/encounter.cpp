// The geometry of an encounter: range, closing speed, aspect and closest approach of threat and target.
#include "encounter.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
namespace {
// The part of the interval, 0 to 1, at which a point that moves from `start` to `end` is nearest to the origin.
double nearestPart(const Triple& start, const Triple& end) {
    const Triple motion = difference(end, start);
    const double squaredLength = dot(motion, motion);
    return squaredLength > 0.0 ? std::clamp(-dot(start, motion) / squaredLength, 0.0, 1.0) : 0.0;
}

bool meetOn(const Sample& sample) {
    return sample.targetPosition == sample.threatPosition;
}

class ClosestApproachSearch {
public:
    void include(const Sample& sample) {
        const Triple end = fromTargetToThreat(sample);
        if (earlier_ != nullptr) {
            const Triple start = fromTargetToThreat(*earlier_);
            const double part = nearestPart(start, end);
            consider(std::lerp(earlier_->time, sample.time, part), length(blended(start, end, part)));
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

Moment momentOn(std::span<const Sample> samples, std::size_t index) {
    const bool isLast = index + 1 == samples.size();
    if (index > 0 && (isLast || meetOn(samples[index])))
        return {&samples[index - 1], &samples[index], 1.0, index, true};
    return {&samples[index], &samples[isLast ? index : index + 1], 0.0, index, true};
}

std::optional<Moment> momentAt(std::span<const Sample> samples, double t) {
    if (samples.empty() || !(t >= samples.front().time && t <= samples.back().time))
        return std::nullopt;
    const auto after = std::ranges::upper_bound(samples, t, {}, &Sample::time);
    const auto index = static_cast<std::size_t>(after - samples.begin()) - 1;
    const Sample& earlier = samples[index];
    if (earlier.time == t)
        return momentOn(samples, index);
    return Moment{&earlier, &*after, (t - earlier.time) / (after->time - earlier.time), index, false};
}

Encounter encounterAt(const Moment& moment) {
    Encounter encounter;
    encounter.range = length(fromTargetToThreat(moment));
    if (length(directionToThreat(moment)) == 0.0)
        return encounter; // they stay together
    encounter.closingSpeed = moment.seconds() > 0.0 ? closingSpeed(moment) : 0.0;
    encounter.aspectDegrees = aspect(moment);
    return encounter;
}

Encounter encounterOn(std::span<const Sample> samples, std::size_t index) {
    return encounterAt(momentOn(samples, index));
}

std::optional<Encounter> encounterAt(std::span<const Sample> samples, double t) {
    const std::optional<Moment> moment = momentAt(samples, t);
    return moment ? std::optional(encounterAt(*moment)) : std::nullopt;
}

std::optional<ClosestApproach> closestApproach(std::span<const Sample> samples) {
    ClosestApproachSearch search;
    for (const Sample& sample : samples)
        search.include(sample);
    return search.closest;
}
} // namespace sorvane
