// What the rows of a set hold.
#pragma once

#include <string>
#include <vector>

#include <QRegularExpression>

#include "measuretext.h"
#include "problem.h"
#include "runrow.h"

namespace sorvane {
// The columns, in their order: how many faults a file has and the first of them, samples and times, the fields of the
// header, every measure that an engagement has one of, and fields of the path.
class RunLayout {
public:
    // `pathExpression` is a regular expression with named groups, such as "case(?<case>\d+)_(?<pattern>\w+)"; each
    // group is a field. None when it is empty. The problem when it is no such expression, or a field has the name of
    // another column.
    static Outcome<RunLayout> make(LengthUnit unit, const std::string& pathExpression);

    LengthUnit unit() const { return unit_; }
    // Names: with the endings that tell the measures' units.
    const std::vector<std::string>& columns() const { return columns_; }
    // The path's fields as the last columns have them: whole numbers without leading zeros as such. Nothing where the
    // expression doesn't match.
    std::vector<RunValue> pathFields(const std::string& path) const;

private:
    LengthUnit unit_ = LengthUnit::Unstated;
    QRegularExpression pathExpression_;
    std::vector<QString> fields_;
    std::vector<std::string> columns_;
};
} // namespace sorvane
