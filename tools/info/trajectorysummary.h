// The samples of a trajectory in numbers.
#pragma once

#include <cstddef>
#include <optional>

#include "sampleseries.h"

namespace sorvane {
struct PositionExtent {
    Triple minimum{};
    Triple maximum{};
};

// Times between neighbouring samples, seconds.
struct StepStatistics {
    double minimum = 0.0;
    double median = 0.0; // the upper one of two in the middle
    double maximum = 0.0;
};

struct FlareSummary {
    std::size_t samples = 0; // that have flares
    std::size_t mostAtOnce = 0;
    std::size_t distinct = 0; // by identifier
    double firstTime = 0.0;   // seconds
    double lastTime = 0.0;
};

struct TrajectorySummary {
    PositionExtent target;
    PositionExtent threat;
    std::optional<StepStatistics> steps; // of two samples or more
    FlareSummary flares;
};

// Needs a sample.
TrajectorySummary summaryOf(const SampleSeries& series);
} // namespace sorvane
