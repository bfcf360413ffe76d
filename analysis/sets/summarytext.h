// How the statistics of a set are written for people.
#pragma once

#include <string>

#include "setsummary.h"

namespace sorvane {
// A number of a column with the unit that the column's name ends in: "12.34 m". "-" when it is undefined.
std::string columnValueText(const std::string& column, double value);
// The same of a round number, without digits that tell nothing: "5 m".
std::string roundValueText(const std::string& column, double value);
// "11.5 to 12.3 m"; empty when it is undefined.
std::string columnIntervalText(const std::string& column, const Interval& interval);
// The column's name without its unit, and with blanks: "closest approach".
std::string columnTitle(const std::string& column);

// "12.3 %", "10.4 to 14.5 %", "123 of 997"; "-" and empty of none.
std::string percentText(double share);
std::string percentIntervalText(const Interval& interval);
std::string countText(const Share& share);
// "0.0012", "below 1e-300".
std::string chanceText(double p);

// "3 runs left out: 2 with faults, 1 without closest_approach_m"; empty when none is.
std::string leftOutText(const RowSummary& summary, const std::string& column);
// A group's value: "007", "12"; "none".
std::string groupText(const RunValue& value);
} // namespace sorvane
