// The line sets of one engagement, built from its samples once and kept until they change.
#include "engagementlines.h"

#include <algorithm>

EngagementLines::EngagementLines(const etxyz& engagement)
    : engagement_(&engagement), times_(engagement.keyframes.keyBegin(), engagement.keyframes.keyEnd()) {}

bool EngagementLines::matches(const etxyz& engagement) const {
    // Samples are only ever added, and the only one added after loading is an empty one at time 0.
    return engagement_ == &engagement && times_.size() == static_cast<std::size_t>(samples().size());
}

std::size_t EngagementLines::sampleCountAt(double time) const {
    return static_cast<std::size_t>(std::upper_bound(times_.begin(), times_.end(), time) - times_.begin());
}

HistoryLine& EngagementLines::history(PathOf body, bool withDropLines) {
    std::optional<HistoryLine>& line = histories_[body == PathOf::Target ? 0 : 1][withDropLines ? 1 : 0];
    if (!line)
        line.emplace(samples(), body, withDropLines);
    return *line;
}

FlareTrails& EngagementLines::trails() {
    if (!trails_)
        trails_.emplace(samples());
    return *trails_;
}
