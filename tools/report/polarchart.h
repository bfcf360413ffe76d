// The runs of a set by the direction that the threat came from.
#pragma once

#include <string>
#include <vector>

#include "distributioncharts.h"

namespace sorvane {
// The runs between two directions.
struct AspectSector {
    double fromDegrees = 0.0;
    double toDegrees = 0.0;     // belongs to the next one, but for the last
    std::vector<double> values; // ascending
    Share decoyed;
};

// Half a circle, from the nose at 0 to the tail at 180, or a whole one where the set has directions beyond those. Empty
// where no run has a direction.
std::vector<AspectSector> aspectSectorsOf(const ReportSet& set);

// Of most values; of those beyond, no more is told than that they are.
ShownRange polarRangeOf(const std::vector<double>& ascending);

// The target in the middle, its nose up; a run is as far out as its value, on the rim beyond the range, and a bow tells
// the median of a sector.
std::string polarChart(const ReportSet& set, const ShownRange& range, const std::vector<AspectSector>& sectors);

// So many runs are drawn; of more, evenly chosen ones are.
inline constexpr std::size_t kMostPolarRuns = 3000;
} // namespace sorvane
