// How a table of runs shows its columns and their values.
#pragma once

#include <string>
#include <vector>

#include <QString>

#include "runrow.h"

namespace sorvane {
// "closest approach" and "m" of "closest_approach_m"; the unit is empty where the column has none.
struct ColumnTitle {
    QString name;
    QString unit;

    // "closest approach (m)"
    QString inOneLine() const { return unit.isEmpty() ? name : QStringLiteral("%1 (%2)").arg(name, unit); }
    // The unit below the name, and a long name in two lines.
    QString inLines() const;
};
ColumnTitle columnTitle(const std::string& column);

// In the order in which they stand in a table.
enum class ColumnKind { Path, FieldOfPath, Measure, Survey, Header };
ColumnKind columnKind(const std::string& column);

// What the column means, and how a condition names it.
QString columnHelp(const std::string& column);

// A value in a cell, without its unit: all of a column's with the same decimals. Nothing is empty.
QString cellText(const RunValue& value, const QString& unit);
// With all of its digits.
QString wholeText(const RunValue& value);

// The condition that a column lies from one number to another; of a column of texts, which the numbers number, that it
// is one of theirs.
QString rangeCondition(const QString& column, double from, double to, const std::vector<std::string>& labels);
} // namespace sorvane
