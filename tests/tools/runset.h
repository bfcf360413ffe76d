// A set's database for tests, without trajectories.
#pragma once

#include <string>
#include <vector>

#include "rundatabase.h"

namespace sorvane {
struct PlainRun {
    std::string path;
    RunValue miss;
    RunValue decoyed;
    RunValue pattern;
    std::int64_t faults = 0;
    RunValue aspect{};
};

// The columns that statistics go by, and the field "pattern" of the path.
inline void
writeRunSet(const std::string& file, const std::vector<PlainRun>& runs, const std::vector<std::string>& calls = {}) {
    const std::vector<std::string> columns{
        "faults",  "fault",  "samples", "closest_approach_m", "closest_approach_time_s", "closest_approach_aspect_deg",
        "decoyed", "pattern"};
    auto database = RunDatabase::open(file, columns);
    std::vector<RunRow> rows;
    for (const PlainRun& run : runs)
        rows.push_back(
            {run.path,
             runStamp(run.path),
             {run.faults, run.faults > 0 ? RunValue("holds no samples") : RunValue(), std::int64_t{1500}, run.miss, 4.5,
              run.aspect, run.decoyed, run.pattern}});
    (*database).put(rows);
    (*database).addCalls(calls);
}
} // namespace sorvane
