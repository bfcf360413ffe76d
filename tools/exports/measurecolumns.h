// The columns of measures in tables.
#pragma once

#include <string>
#include <vector>

#include "measure.h"

namespace sorvane {
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
