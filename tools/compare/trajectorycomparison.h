// Compares two trajectories: their headers, their times, and the fields of the samples of one time.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "trajectoryfile.h"

namespace sorvane {
struct HeaderDifference {
    const char* field = "";
    std::string a;
    std::string b;
};

// Of a field of the samples at `time`. Fields of flares are named after the flare's id: "flare_3_x".
struct SampleDifference {
    double time = 0.0;
    std::string field;
    double a = 0.0;
    double b = 0.0;

    double size() const; // without what subtraction has left of the last digits
};

// All differences of one field.
struct FieldSummary {
    std::string field;
    std::size_t samples = 0;
    SampleDifference largest; // the earliest of equal ones
};

struct TrajectoryComparison {
    std::vector<HeaderDifference> header;
    std::vector<double> onlyInA; // times
    std::vector<double> onlyInB;
    std::size_t compared = 0;         // samples whose time both have
    std::vector<FieldSummary> fields; // those with differences, in the order in which they were found

    bool agrees() const { return header.empty() && onlyInA.empty() && onlyInB.empty() && fields.empty(); }
};

// Calls `report` for every field that differs by more than `tolerance`, by time. Times are compared exactly, angles as
// plain numbers; of flares, those of one id in the order of the file, and one that only one of the two samples has
// counts as a difference of the field "flare_ID", 1 where it is and 0 where it is not.
TrajectoryComparison compareTrajectories(
    const TrajectoryFile& a, const TrajectoryFile& b, double tolerance,
    const std::function<void(const SampleDifference&)>& report);
} // namespace sorvane
