// What a set of engagements comes to: how far they missed, how many within a distance, how many were decoyed.
#pragma once

#include <string>
#include <vector>

#include "runreader.h"
#include "statistics.h"
#include "twosamples.h"

namespace sorvane {
// What is asked of a set.
struct SetQuestion {
    std::string condition;         // SQL; all rows when empty
    std::string column;            // whose numbers are described; the miss distance when empty
    std::string groupColumn;       // by which the rows are told apart; none when empty
    std::vector<double> distances; // within which shares are counted
    bool withFaulty = false;       // rows of files with faults count, too
};

// Of rows, all of a set or a group of them.
struct RowSummary {
    RunValue group;
    std::int64_t rows = 0;
    std::int64_t faulty = 0;    // left out, since their files have faults
    std::int64_t undefined = 0; // left out, without a number in the column
    std::vector<double> values; // ascending
    double mean = 0.0;          // NaN where undefined
    double deviation = 0.0;     // standard; likewise
    Interval median;            // its bootstrap interval; likewise
    std::vector<Share> within;  // the question's distances
    Share decoyed;              // of those of which it is known
};

struct SetSummary {
    std::string column;
    RowSummary all;
    std::vector<RowSummary> groups; // by ascending value of the group's column: none, numbers, texts
};

// The problem when the database can't be read, has no such columns, no row that counts, or more groups than anyone
// reads.
Outcome<SetSummary> summaryOf(const RunReader& reader, const SetQuestion& question);

// How a set differs from another one; each difference is that of the first less the other.
struct ShareDifference {
    double value = 0.0; // NaN where one is of none
    Interval interval;
};
struct SetDifference {
    std::vector<ShareDifference> within;
    ShareDifference decoyed;
    double median = 0.0;
    Interval medianInterval;
    KolmogorovSmirnov kolmogorovSmirnov;
    MannWhitney mannWhitney;
};
// Of summaries of the same distances with values.
SetDifference differenceOf(const RowSummary& a, const RowSummary& b);
} // namespace sorvane
