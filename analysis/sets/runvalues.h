// What a trajectory puts into the row of a set, read for it or loaded already.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "measuredengagement.h"
#include "runlayout.h"
#include "trajectoryreader.h"

namespace sorvane {
struct RunFaults {
    std::int64_t count = 0;
    std::string first; // in words, with its line
};

// What the lines of the trajectory at `path` lack. Reads the file.
RunFaults lineFaults(const std::string& path);

// Both put theirs among the values of a layout's columns: the faults, and all the rest but the path's fields.
void putFaults(RunFaults faults, std::span<RunValue> values);
// `radiation` is that of the layout.
void putEngagement(
    const TrajectoryFileHeader& header, const MeasuredEngagement& measured, std::span<RunValue> values,
    RunRadiation radiation = RunRadiation::Without);
} // namespace sorvane
