// The samples of a trajectory in numbers, gathered without their flares.
#include "trajectorysummary.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <span>
#include <unordered_set>

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

std::optional<StepStatistics> stepsOf(std::vector<double> steps) {
    if (steps.empty())
        return std::nullopt;
    const auto [least, greatest] = std::ranges::minmax(steps);
    const auto middle = steps.begin() + static_cast<std::ptrdiff_t>(steps.size() / 2);
    std::ranges::nth_element(steps, middle);
    return StepStatistics{least, *middle, greatest};
}
} // namespace

void PositionExtent::include(const float (&position)[3]) {
    for (int axis = 0; axis < 3; ++axis) {
        minimum[axis] = std::min(minimum[axis], position[axis]);
        maximum[axis] = std::max(maximum[axis], position[axis]);
    }
}

void SampleTable::add(const keyframe& sample, const std::vector<flareKeyframe>& flares) {
    const std::size_t begin = flareIds_.size();
    for (const flareKeyframe& flare : flares)
        flareIds_.push_back(flare.id);
    rows_.push_back({sample, begin, flareIds_.size()});
    greys_.include(flares);
}

void SampleTable::putInOrder() {
    const auto timeOf = [](const Row& row) {
        return row.sample.time;
    };
    if (std::ranges::adjacent_find(rows_, std::ranges::greater_equal(), timeOf) == rows_.end())
        return;
    std::ranges::stable_sort(rows_, std::ranges::less(), timeOf);
    // Of equal times the last one stays: reversed, the first one.
    std::ranges::reverse(rows_);
    const auto isRepeated = [&timeOf](const Row& a, const Row& b) {
        return timeOf(a) == timeOf(b);
    };
    rows_.erase(std::unique(rows_.begin(), rows_.end(), isRepeated), rows_.end());
    std::ranges::reverse(rows_);
}

TrajectorySummary SampleTable::summarise() {
    putInOrder();
    TrajectorySummary summary;
    summary.samples = rows_.size();
    if (rows_.empty())
        return summary;
    FlareCounter flares;
    ClosestApproachSearch search;
    std::vector<double> steps;
    steps.reserve(rows_.size());
    for (const Row& row : rows_) {
        if (&row != &rows_.front())
            steps.push_back(row.sample.time - std::prev(&row)->sample.time);
        summary.target.include(row.sample.targetPos);
        summary.threat.include(row.sample.threatPos);
        flares.include(row.sample.time, std::span(flareIds_).subspan(row.flaresBegin, row.flaresEnd - row.flaresBegin));
        search.include(row.sample);
    }
    summary.steps = stepsOf(std::move(steps));
    summary.flares = flares.result();
    summary.flares.greys = greys_.byId();
    summary.closest = search.result();
    const std::size_t last = rows_.size() - 1;
    summary.first = rows_.front().sample;
    summary.second = rows_[std::min<std::size_t>(1, last)].sample;
    summary.secondLast = rows_[last > 0 ? last - 1 : 0].sample;
    summary.last = rows_.back().sample;
    return summary;
}
} // namespace sorvane
