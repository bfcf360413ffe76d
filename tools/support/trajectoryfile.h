// Opens and reads trajectories for the sub-commands, from files and from standard input.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "problem.h"
#include "trajectoryinput.h"
#include "trajectoryreader.h"

namespace sorvane {
// The trajectory at `path`; "-" is standard input.
TrajectoryInput openTrajectoryAt(const std::string& path);

// The trajectory, if it is one; the problem, which names the file, when it can't be opened or is something else.
sorvane::Outcome<TrajectoryInput> openTrajectoryFile(const std::string& path);

// After reading: the data could not be decompressed, or hold no samples. Nothing when all is well.
std::optional<sorvane::Problem>
problemOfReading(const TrajectoryInput& input, bool hasSamples, const std::string& path);

// A trajectory's header and samples, none of the files that it names.
struct TrajectoryFile {
    TrajectoryFileHeader header;
    std::vector<FlaredSample> samples; // at least one; by ascending time, of those of one time the last one
};

// The problem, which names the file, when the trajectory can't be opened or decompressed, is something else or holds no
// samples.
sorvane::Outcome<TrajectoryFile> readTrajectoryFile(const std::string& path);

// The same as measures need it.
struct TrajectorySamples {
    TrajectoryFileHeader header;
    SampleSeries series;
    bool isWhollyRead = true; // every word that belongs there was there and a number
};
sorvane::Outcome<TrajectorySamples> readTrajectorySamples(const std::string& path);
} // namespace sorvane
