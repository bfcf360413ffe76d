// Reads a trajectory as the viewer does, but with its numbers in double precision and with its comments.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "exactsample.h"

class QIODevice;

namespace sorvane {
struct ExactTrajectory {
    std::string header;               // the twelve lines and the comments among them, as they are
    std::vector<ExactSample> samples; // by ascending time; of those with the same time the last one in the file
    std::string lastComments;         // those after the last record

    // What the viewer copes with in silence.
    std::int64_t badNumbers = 0;   // malformed or missing: read as 0
    std::int64_t firstBadLine = 0; // counted from 1
    std::int64_t linesNotRead = 0; // behind a blank line that ends the data
    bool isTruncated = false;      // the data end within a record
};

// Reads on from where the device stands, which is a trajectory's beginning, to the end of the data.
ExactTrajectory readExactly(QIODevice* device, bool isProcess);
} // namespace sorvane
