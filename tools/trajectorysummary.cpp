// The samples of a trajectory in numbers, gathered in one pass.
#include "trajectorysummary.h"

#include <algorithm>
#include <unordered_set>

namespace {
// Counts the identifiers. Most flares stand where they stood in the sample before: those are not looked up.
class FlareCounter {
public:
    void include(const keyframe& sample) {
        const QList<flareKeyframe>& flares = sample.flares;
        if (flares.isEmpty())
            return;
        if (summary_.samples++ == 0)
            summary_.firstTime = sample.time;
        summary_.lastTime = sample.time;
        summary_.mostAtOnce = std::max(summary_.mostAtOnce, flares.size());
        const std::size_t known = previous_.size();
        previous_.resize(std::max(known, static_cast<std::size_t>(flares.size())));
        std::size_t place = 0;
        for (const flareKeyframe& flare : flares) {
            if (place >= known || previous_[place] != flare.id)
                seen_.insert(flare.id);
            previous_[place++] = flare.id;
        }
    }

    FlareSummary result() const {
        FlareSummary summary = summary_;
        summary.distinct = static_cast<qsizetype>(seen_.size());
        return summary;
    }

private:
    FlareSummary summary_;
    std::vector<int> previous_; // the identifier that was last seen at each place
    std::unordered_set<int> seen_;
};

std::optional<TimeSteps> stepsOf(std::vector<double> steps) {
    if (steps.empty())
        return std::nullopt;
    const auto [least, greatest] = std::ranges::minmax(steps);
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::ranges::nth_element(steps, middle);
    return TimeSteps{least, *middle, greatest};
}
} // namespace

void PositionExtent::include(const float (&position)[3]) {
    for (int axis = 0; axis < 3; ++axis) {
        minimum[axis] = std::min(minimum[axis], position[axis]);
        maximum[axis] = std::max(maximum[axis], position[axis]);
    }
}

TrajectorySummary summarise(const QMap<double, keyframe>& samples) {
    TrajectorySummary summary;
    FlareCounter flares;
    std::vector<double> steps;
    steps.reserve(static_cast<std::size_t>(samples.size()));
    const keyframe* previous = nullptr;
    for (const keyframe& sample : samples) {
        summary.target.include(sample.targetPos);
        summary.threat.include(sample.threatPos);
        flares.include(sample);
        if (previous != nullptr)
            steps.push_back(sample.time - previous->time);
        previous = &sample;
    }
    summary.steps = stepsOf(std::move(steps));
    summary.flares = flares.result();
    return summary;
}
