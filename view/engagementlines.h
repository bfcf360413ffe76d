// The line sets of one engagement, built from its samples once and kept until they change.
#pragma once

#include <optional>

#include "etxyz.h"
#include "flaretrails.h"
#include "historyline.h"

class EngagementLines {
public:
    explicit EngagementLines(const etxyz& engagement);

    // Whether the line sets still fit the engagement's samples.
    bool matches(const etxyz& engagement) const;

    // The world position from which the vertices of the line sets count.
    const Vertex& origin() const { return origin_; }

    // The line sets, built on first use. Drawing them needs a current GL context.
    HistoryLine& history(PathOf body, bool withDropLines);
    FlareTrails& trails();

private:
    const QMap<double, keyframe>& samples() const { return engagement_->keyframes; }

    const etxyz* engagement_;
    qsizetype sampleCount_; // when the line sets began to be built
    Vertex origin_{};
    std::optional<HistoryLine> histories_[2][2]; // by body, by drop lines
    std::optional<FlareTrails> trails_;
};
