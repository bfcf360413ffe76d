// A part of a list of files, for one of several processes.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "problem.h"

namespace sorvane {
// Every count-th file, from the number-th on.
struct Shard {
    std::size_t number = 1; // from 1
    std::size_t count = 1;

    bool operator==(const Shard&) const = default;
};

// "2/8". The problem when it is something else.
Outcome<Shard> shardOf(const std::string& text);
// The part of this task of a job array of Slurm, by the variables SLURM_ARRAY_TASK_ID, _MIN and _COUNT of the
// environment; all when they don't say.
Shard shardOfArrayTask();

// The shard's part of the files, which are put in ascending order of their bytes, each once.
std::vector<std::string> shardFiles(std::vector<std::string> files, const Shard& shard);
} // namespace sorvane
