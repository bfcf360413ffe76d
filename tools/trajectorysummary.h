// The samples of a trajectory in numbers, gathered in one pass.
#pragma once

#include <limits>
#include <optional>
#include <vector>

#include <QMap>

#include "keyframe.h"

struct PositionExtent {
    float minimum[3] = {
        std::numeric_limits<float>::max(), std::numeric_limits<float>::max(), std::numeric_limits<float>::max()};
    float maximum[3] = {
        std::numeric_limits<float>::lowest(), std::numeric_limits<float>::lowest(),
        std::numeric_limits<float>::lowest()};

    void include(const float (&position)[3]);
};

// Times between neighbouring samples, seconds.
struct TimeSteps {
    double minimum = 0.0;
    double median = 0.0; // the upper one of two in the middle
    double maximum = 0.0;
};

struct FlareSummary {
    qsizetype samples = 0; // with flares
    qsizetype mostAtOnce = 0;
    qsizetype distinct = 0; // by identifier
    double firstTime = 0.0; // seconds
    double lastTime = 0.0;
};

struct TrajectorySummary {
    PositionExtent target;
    PositionExtent threat;
    std::optional<TimeSteps> steps; // of two samples or more
    FlareSummary flares;
};

// O(n) for samples and flares whose identifiers mostly stay the same from sample to sample.
TrajectorySummary summarise(const QMap<double, keyframe>& samples);
