// The values of measures as tables, records and arrays have them, everywhere with the same digits: without those that
// arithmetic has made up.
#pragma once

#include <span>
#include <vector>

#include "measure.h"

namespace sorvane {
// Each of the kind of measure that its name says; NaN is what is undefined.
std::vector<double> writtenOnSamples(const MeasuredEngagement& engagement, const Measure& measure);
std::vector<double>
writtenAt(const MeasuredEngagement& engagement, const Measure& measure, std::span<const double> times);
std::vector<double> writtenOnAllRows(const MeasuredEngagement& engagement, const Measure& measure);
// The times of the first track, then those of the next.
std::vector<double>
writtenOfFlaresAt(const MeasuredEngagement& engagement, const Measure& measure, std::span<const double> times);
double writtenOf(const EngagementResults& results, const Measure& measure);
// By track.
std::vector<double> writtenOfFlares(const EngagementResults& results, const Measure& measure);
} // namespace sorvane
