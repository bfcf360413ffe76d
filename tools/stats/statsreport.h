// The statistics of a set, or of two, and how they are written.
#pragma once

#include <optional>
#include <ostream>

#include "setsummary.h"

namespace sorvane {
// A set as it was asked for.
struct AskedSet {
    std::string path;
    SetQuestion question;
    SetSummary summary;
};

struct StatsReport {
    AskedSet set;
    std::optional<AskedSet> other; // of the same column and distances, without groups
    std::optional<SetDifference> difference;
};

// For people.
void writeText(const StatsReport& report, std::ostream& out);
// One JSON object; a table with a row for each statistic. Numbers have all of their digits.
void writeJson(const StatsReport& report, std::ostream& out);
void writeCsv(const StatsReport& report, std::ostream& out);

// The quantiles that are written.
inline constexpr double kWrittenQuantiles[] = {0.0, 0.05, 0.25, 0.5, 0.75, 0.95, 1.0};
} // namespace sorvane
