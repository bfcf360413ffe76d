// What an engagement comes to.
#include "engagementresults.h"

#include <algorithm>
#include <cmath>

#include "radiometricmeasures.h"
#include "withoutnoise.h"

namespace sorvane {
namespace {
const double kUndefined = std::nan("");

double firstFlareTime(const MeasuredEngagement& engagement) {
    if (engagement.tracks().size() == 0)
        return kUndefined;
    return engagement.samples()[engagement.tracks().sampleOf(0)].time;
}
} // namespace

ClosestApproach writtenClosestApproach(std::span<const Sample> samples, const ClosestApproach& closest) {
    const auto after = std::ranges::lower_bound(samples, closest.time, {}, &Sample::time);
    const Sample& near = after == samples.end() ? samples.back() : *after;
    return {withoutNoise(closest.time, near.time), withoutNoise(closest.range, greatestCoordinate(near))};
}

EngagementResults resultsOf(const MeasuredEngagement& engagement) {
    EngagementResults results{
        .closest = {kUndefined, kUndefined},
        .atClosest = {kUndefined, kUndefined, kUndefined},
        .relativeSpeedAtClosest = kUndefined,
        .firstFlareTime = firstFlareTime(engagement),
        .field = fieldTimes(engagement),
        .radiometric = radiometricResults(engagement)};
    if (const std::optional<ClosestApproach> closest = closestApproach(engagement.samples())) {
        results.closest = writtenClosestApproach(engagement.samples(), *closest);
        if (const std::optional<Moment> moment = engagement.at(closest->time)) {
            results.atClosest = writtenEncounter(*moment);
            results.relativeSpeedAtClosest = length(relativeVelocity(*moment));
        }
    }
    return results;
}
} // namespace sorvane
