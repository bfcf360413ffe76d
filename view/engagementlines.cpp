// The line sets of one engagement, built from its samples once and kept until they change.
#include "engagementlines.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
namespace {
// Where the engagement ends: there target and threat meet, and a view comes closest.
Vertex lastTargetPosition(const QMap<double, keyframe>& samples) {
    Vertex position{};
    if (!samples.isEmpty())
        std::copy_n(samples.last().targetPos, 3, position.begin());
    const bool isSomewhere =
        std::all_of(position.begin(), position.end(), [](float coordinate) { return std::isfinite(coordinate); });
    return isSomewhere ? position : Vertex{};
}
} // namespace

EngagementLines::EngagementLines(const QMap<double, keyframe>& samples)
    : sampleCount_(samples.size()), origin_(lastTargetPosition(samples)) {}

HistoryLine& EngagementLines::history(const QMap<double, keyframe>& samples, PathOf body, bool withDropLines) {
    std::optional<HistoryLine>& line = histories_[body == PathOf::Target ? 0 : 1][withDropLines ? 1 : 0];
    if (!line)
        line.emplace(samples, body, withDropLines, origin_);
    return *line;
}

FlareTrails& EngagementLines::trails(const QMap<double, keyframe>& samples) {
    if (!trails_)
        trails_.emplace(samples, origin_);
    return *trails_;
}
} // namespace sorvane
