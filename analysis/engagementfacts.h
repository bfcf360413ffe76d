// What is worked out once of an engagement: its closest approach and its events.
#pragma once

#include <optional>
#include <vector>

#include <QString>

#include "encounter.h"
#include "sampleseries.h"

namespace sorvane {
constexpr double kTimeNoise = 1.0e-9; // seconds; what rounding adds to equal times

struct EngagementEvent {
    double time = 0.0; // seconds
    QString name;
};

struct EngagementFacts {
    std::optional<ClosestApproach> closest;
    std::vector<EngagementEvent> events; // in order of time, each at a time of its own
};

// The first and the last sample, each flare's first appearance and the closest approach. Needs at least one sample.
EngagementFacts factsOf(const SampleSeries& series);
} // namespace sorvane
