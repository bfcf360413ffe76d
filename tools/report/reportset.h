// The runs of a set as a report shows them.
#pragma once

#include <string>
#include <vector>

#include "setsummary.h"

namespace sorvane {
// A run that counts.
struct ReportRun {
    std::string path;
    RunStamp stamp;
    double value = 0.0;         // in the column that is asked for, as a rule the miss distance
    double decoyed = 0.0;       // NaN when it isn't known
    double aspectDegrees = 0.0; // likewise
    double timeSeconds = 0.0;   // of the closest approach; likewise
    std::string group;          // empty without a column to group by
};

// A column of the table: of all runs, those that don't count, too.
struct ReportColumn {
    std::string name;
    std::vector<RunValue> values;

    bool isText() const;
};

struct ReportSet {
    std::string path;
    std::vector<std::string> calls; // that its rows have come by
    SetQuestion question;
    std::string aspectColumn; // empty where there is none
    SetSummary summary;
    std::vector<ReportRun> runs; // by ascending path
    std::vector<ReportColumn> columns;
};

// Without `aspectColumn` the aspect at the closest approach. The problem when there is no run to count, too.
Outcome<ReportSet> readReportSet(const std::string& path, const SetQuestion& question, const std::string& aspectColumn);
} // namespace sorvane
