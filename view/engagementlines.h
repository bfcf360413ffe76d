// The line sets of one engagement, built from its samples once and kept until they change.
#pragma once

#include <optional>

#include "etxyz.h"
#include "flaretrails.h"
#include "historyline.h"

namespace sorvane {
class EngagementLines {
public:
    explicit EngagementLines(const QMap<double, keyframe>& samples);

    // Whether they still are those of the engagement's samples. Once loaded, these change in one way only: an empty
    // sample is added at time 0.
    bool fit(const QMap<double, keyframe>& samples) const { return sampleCount_ == samples.size(); }

    // The world position from which the vertices of the line sets count.
    const Vertex& origin() const { return origin_; }

    // The line sets, built on first use from samples that they fit. Drawing them needs a current GL context.
    HistoryLine& history(const QMap<double, keyframe>& samples, PathOf body, bool withDropLines);
    FlareTrails& trails(const QMap<double, keyframe>& samples);

private:
    qsizetype sampleCount_; // of the samples that they are built from
    Vertex origin_{};
    std::optional<HistoryLine> histories_[2][2]; // by body, by drop lines
    std::optional<FlareTrails> trails_;
};
} // namespace sorvane
