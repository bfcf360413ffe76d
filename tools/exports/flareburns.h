// When the flares of a trajectory burn.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "measuredengagement.h"

namespace sorvane {
// From when a sample lists a flare until one doesn't.
struct FlareBurn {
    std::span<const FlareTracks::Number> rows; // of FlareColumns, at least one, of samples that follow each other
    std::size_t firstSample = 0;
    std::size_t outSample = 0; // where it is out; the last sample of all when it burns to the end
};

// Of one flare, by time. They refer to the engagement.
std::vector<FlareBurn> burnsOf(const MeasuredEngagement& engagement, std::size_t track);

// "Flare 7"
std::string flareName(const MeasuredEngagement& engagement, std::size_t track);
} // namespace sorvane
