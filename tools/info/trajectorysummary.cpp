// The samples of a trajectory in numbers.
#include "trajectorysummary.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <unordered_set>
#include <vector>

#include "withoutnoise.h"

namespace sorvane {
namespace {
// Counts the identifiers. Most flares stand where they stood in the sample before: those are not looked up.
class FlareCounter {
public:
    void include(double time, std::span<const int> ids) {
        if (ids.empty())
            return;
        if (summary_.samples++ == 0)
            summary_.firstTime = time;
        summary_.lastTime = time;
        summary_.mostAtOnce = std::max(summary_.mostAtOnce, ids.size());
        for (std::size_t place = 0; place < ids.size(); ++place)
            if (place >= previous_.size() || previous_[place] != ids[place])
                seen_.insert(ids[place]);
        previous_ = ids;
    }

    FlareSummary result() const {
        FlareSummary summary = summary_;
        summary.distinct = seen_.size();
        return summary;
    }

private:
    FlareSummary summary_;
    std::span<const int> previous_;
    std::unordered_set<int> seen_;
};

std::optional<StepStatistics> stepsOf(std::span<const Sample> samples) {
    std::vector<double> steps;
    steps.reserve(samples.size());
    for (std::size_t i = 1; i < samples.size(); ++i)
        steps.push_back(samples[i].time - samples[i - 1].time);
    if (steps.empty())
        return std::nullopt;
    const auto [least, greatest] = std::ranges::minmax(steps);
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::ranges::nth_element(steps, middle);
    const double latest = std::max(std::abs(samples.front().time), std::abs(samples.back().time));
    return StepStatistics{withoutNoise(least, latest), withoutNoise(*middle, latest), withoutNoise(greatest, latest)};
}

PositionExtent extentOf(std::span<const Sample> samples, Triple Sample::*position) {
    PositionExtent extent{samples.front().*position, samples.front().*position};
    for (const Sample& sample : samples)
        for (std::size_t axis = 0; axis < extent.minimum.size(); ++axis) {
            extent.minimum[axis] = std::min(extent.minimum[axis], (sample.*position)[axis]);
            extent.maximum[axis] = std::max(extent.maximum[axis], (sample.*position)[axis]);
        }
    return extent;
}

FlareSummary flaresOf(const SampleSeries& series) {
    FlareCounter counter;
    for (std::size_t i = 0; i < series.samples().size(); ++i)
        counter.include(series.samples()[i].time, series.flareIds(i));
    return counter.result();
}
} // namespace

TrajectorySummary summaryOf(const SampleSeries& series) {
    const std::span<const Sample> samples = series.samples();
    return {
        .target = extentOf(samples, &Sample::targetPosition),
        .threat = extentOf(samples, &Sample::threatPosition),
        .steps = stepsOf(samples),
        .flares = flaresOf(series),
    };
}
} // namespace sorvane
