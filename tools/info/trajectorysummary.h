// The samples of a trajectory in numbers, gathered without their flares.
#pragma once

#include <cstddef>
#include <limits>
#include <map>
#include <optional>
#include <vector>

#include "encounter.h"
#include "flaregrey.h"
#include "keyframe.h"

namespace sorvane {
struct PositionExtent {
    float minimum[3] = {
        std::numeric_limits<float>::max(), std::numeric_limits<float>::max(), std::numeric_limits<float>::max()};
    float maximum[3] = {
        std::numeric_limits<float>::lowest(), std::numeric_limits<float>::lowest(),
        std::numeric_limits<float>::lowest()};

    void include(const float (&position)[3]);
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
    std::map<int, BrightestFlares::Flare> greys; // by identifier
};

struct TrajectorySummary {
    std::size_t samples = 0;
    PositionExtent target;
    PositionExtent threat;
    std::optional<StepStatistics> steps; // of two samples or more
    FlareSummary flares;
    std::optional<ClosestApproach> closest;
    // The first two and the last two samples, the same one twice where there is just one; without flares.
    keyframe first;
    keyframe second;
    keyframe secondLast;
    keyframe last;
};

// Gathers the samples as the file gives them, with the identifiers of their flares.
class SampleTable {
public:
    void add(const keyframe& sample, const std::vector<flareKeyframe>& flares);

    // By ascending time, with the later one of two of the same time: the samples that the viewer has.
    TrajectorySummary summarise();

private:
    struct Row {
        keyframe sample; // without flares
        std::size_t flaresBegin = 0;
        std::size_t flaresEnd = 0;
    };

    void putInOrder();

    std::vector<Row> rows_;
    std::vector<int> flareIds_;
    BrightestFlares greys_;
};
} // namespace sorvane
