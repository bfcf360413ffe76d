// Writes what a comparison found, for people or as JSON.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "picturecomparison.h"
#include "trajectorycomparison.h"

namespace sorvane {
struct PictureReport {
    std::string a; // names of the two
    std::string b;
    PictureComparison comparison;
    int tolerance = 0;
    double allowed = 0.0;
};

struct TrajectoryReport {
    std::string a;
    std::string b;
    double tolerance = 0.0;
    TrajectoryComparison comparison;
    std::size_t found = 0;  // differences of fields
    std::size_t listed = 0; // at most so many of them, and of the times that only one has, are listed
    std::vector<SampleDifference> differences;
};

void writeText(std::ostream& out, const PictureReport& report);
void writeJson(std::ostream& out, const PictureReport& report);
void writeText(std::ostream& out, const TrajectoryReport& report);
void writeJson(std::ostream& out, const TrajectoryReport& report);
} // namespace sorvane
