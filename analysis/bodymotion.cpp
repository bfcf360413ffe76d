// How fast a body moves and turns, from its positions alone.
#include "bodymotion.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "triples.h"

namespace sorvane {
namespace {
Triple slope(const Sample& earlier, const Sample& later, BodyPosition position) {
    return scaled(difference(later.*position, earlier.*position), 1.0 / (later.time - earlier.time));
}

// The first element from `begin` on for which `isFar` holds, which then holds for all after it; `end` without one.
// Quick when it is near.
template <class Iterator, class IsFar> Iterator firstFar(Iterator begin, Iterator end, IsFar isFar) {
    const auto isNear = [&](const Sample& sample) {
        return !isFar(sample);
    };
    for (std::ptrdiff_t step = 1; step < end - begin; step *= 2) {
        if (isFar(begin[step]))
            return std::partition_point(begin, begin + step, isNear);
        begin += step;
    }
    return std::partition_point(begin, end, isNear);
}

// Of a circle of that curvature.
double arcOver(double chord, double curvature) {
    const double sine = std::min(chord * curvature / 2.0, 1.0);
    return sine > 0.0 ? chord * std::asin(sine) / sine : chord;
}
} // namespace

double speedOn(std::span<const Sample> samples, BodyPosition position, std::size_t index) {
    if (samples.size() < 2)
        return std::nan("");
    const Sample& now = samples[index];
    if (index == 0 || index + 1 == samples.size())
        return length(slope(samples[index == 0 ? 0 : index - 1], samples[index == 0 ? 1 : index], position));
    const Sample& before = samples[index - 1];
    const Sample& after = samples[index + 1];
    const double part = (now.time - before.time) / (after.time - before.time);
    return length(blended(slope(before, now, position), slope(now, after, position), part));
}

double lateralAccelerationOn(std::span<const Sample> samples, BodyPosition position, std::size_t index) {
    constexpr double kRounding = 1.0e-9; // seconds; of equal steps some come out shorter
    const Sample& now = samples[index];
    const auto isFar = [&](const Sample& other) {
        return std::abs(other.time - now.time) >= kTurnSeconds - kRounding;
    };
    const auto at = samples.begin() + static_cast<std::ptrdiff_t>(index);
    const auto after = firstFar(at, samples.end(), isFar);
    const auto before = firstFar(std::make_reverse_iterator(at), samples.rend(), isFar);
    if (after == samples.end() || before == samples.rend())
        return std::nan("");
    const Triple come = difference(now.*position, (*before).*position);
    const Triple go = difference((*after).*position, now.*position);
    const double comeLength = length(come);
    const double goLength = length(go);
    const double whole = length(difference((*after).*position, (*before).*position));
    const double curvature = 2.0 * length(cross(come, go)) / (comeLength * goLength * whole);
    const double seconds = after->time - before->time;
    const double speed = (arcOver(comeLength, curvature) + arcOver(goLength, curvature)) / seconds;
    return speed * speed * curvature;
}
} // namespace sorvane
