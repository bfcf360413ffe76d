// The line sets of one engagement, built from its samples once and kept until they change.
#include "engagementlines.h"

EngagementLines::EngagementLines(const etxyz& engagement)
    : engagement_(&engagement), sampleCount_(engagement.keyframes.size()) {}

bool EngagementLines::matches(const etxyz& engagement) const {
    // Samples are only ever added, and the only one added after loading is an empty one at time 0.
    return engagement_ == &engagement && sampleCount_ == samples().size();
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
