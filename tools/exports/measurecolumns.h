// The columns of measures in tables: which ones are asked for, and their values.
#pragma once

#include <string>
#include <vector>

#include "measure.h"
#include "problem.h"

namespace sorvane {
// The measures that a table can hold by a list of names, separated by commas; "all" is each of them. A table of samples
// holds those of moments, one of flares those of flares as well. What is wrong with the list otherwise.
Outcome<std::vector<const Measure*>> chooseMeasures(const std::string& list, bool isOfFlares);

// A column of a table with a row for each sample, or for each flare of each sample.
class MeasureColumn {
public:
    enum class Rows { Samples, Flares };

    MeasureColumn(const MeasuredEngagement& engagement, const Measure& measure, Rows rows);

    std::string name() const;
    // Numbers have up to 15 digits, what arithmetic can be trusted for; objects are named, undefined ones stay empty.
    void append(std::string& text, std::size_t row) const;

private:
    const MeasuredEngagement* engagement_;
    const Measure* measure_;
    std::vector<double> values_;
    bool isBySample_; // in a table of flares: each of the sample's rows has its value
};
} // namespace sorvane
