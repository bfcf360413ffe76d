// Drawings of how the numbers of a set are distributed.
#pragma once

#include <string>
#include <vector>

#include "reportset.h"
#include "svgdrawing.h"

namespace sorvane {
// The values that drawings show, in steps of a round width. The farthest ones are left out where they would squeeze the
// rest.
struct ShownRange {
    double from = 0.0;
    double to = 1.0;
    double step = 1.0;
    std::int64_t beyond = 0; // values above `to`
};
ShownRange shownRangeOf(const std::vector<double>& ascending);

// How a value is drawn that a run's being decoyed tells.
inline const char* styleOf(double decoyed) {
    return decoyed != decoyed ? "third" : decoyed != 0.0 ? "second" : "first";
}
// "not decoyed", "decoyed" and "unknown" with the colours of the styles above, as HTML, for those that are there.
std::string decoyedKey(const std::vector<ReportRun>& runs);

// Bars of runs, by whether they were decoyed. Each bar's filter chooses its runs in the page's table.
std::string histogramOf(const ReportSet& set, const ShownRange& range);
// The share of runs up to a value, with the band that holds all of the distribution's.
std::string cumulativeCurveOf(const ReportSet& set, const ShownRange& range);

struct NamedShare {
    std::string name;
    Share share;
};
// Shares with their intervals, under one another.
std::string sharesChart(const std::vector<NamedShare>& shares);
// A share with its interval from 0 to 1, beside a text.
std::string shareMark(const Share& share);
} // namespace sorvane
