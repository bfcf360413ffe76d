// What the rows of a set hold.
#pragma once

#include <string>
#include <vector>

#include <QRegularExpression>

#include "measuretext.h"
#include "problem.h"
#include "runrow.h"

namespace sorvane {
struct Measure;

// Whether a row has the measures that need the target's signature, too.
enum class RunRadiation { Without, With };

// Whether rows have a column of the measure.
bool isRunMeasure(const Measure& measure, RunRadiation radiation);

// The columns, in their order: how many faults a file has and the first of them, samples and times, the fields of the
// header, every measure that an engagement has one of, those of radiation after the others, and fields of the path.
class RunLayout {
public:
    // `pathExpression` is a regular expression with named groups, such as "case(?<case>\d+)_(?<pattern>\w+)"; each
    // group is a field. None when it is empty. The problem when it is no such expression, or a field has the name of
    // another column.
    static Outcome<RunLayout>
    make(LengthUnit unit, const std::string& pathExpression, RunRadiation radiation = RunRadiation::Without);

    LengthUnit unit() const { return unit_; }
    RunRadiation radiation() const { return radiation_; }
    // Names: with the endings that tell the measures' units.
    const std::vector<std::string>& columns() const { return columns_; }
    // The path's fields as the last columns have them: whole numbers without leading zeros as such. Nothing where the
    // expression doesn't match.
    std::vector<RunValue> pathFields(const std::string& path) const;

private:
    LengthUnit unit_ = LengthUnit::Unstated;
    RunRadiation radiation_ = RunRadiation::Without;
    QRegularExpression pathExpression_;
    std::vector<QString> fields_;
    std::vector<std::string> columns_;
};
} // namespace sorvane
