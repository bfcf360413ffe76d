// What the rows of a set hold.
#include "runlayout.h"

#include <algorithm>
#include <charconv>

#include "measure.h"
#include "trajectoryheaderfields.h"

namespace sorvane {
namespace {
constexpr const char* kFirstColumns[] = {"faults", "fault", "samples", "flares", "start_s", "end_s"};

bool isTaken(const std::vector<std::string>& columns, const std::string& name) {
    // A database tells no capital letters apart.
    const auto isSame = [&](const std::string& other) {
        return QString::fromStdString(other).compare(QString::fromStdString(name), Qt::CaseInsensitive) == 0;
    };
    return std::ranges::any_of(columns, isSame) || std::ranges::any_of(kRunKeyColumns, isSame);
}

RunValue valueOf(const QString& text) {
    const std::string digits = text.toStdString();
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool isNumber = error == std::errc() && end == digits.data() + digits.size();
    return isNumber && std::to_string(number) == digits ? RunValue(number) : RunValue(digits);
}
} // namespace

bool isRunMeasure(const Measure& measure, RunRadiation radiation) {
    return measure.isOfEngagement() && (radiation == RunRadiation::With || !measure.needsRadiometry());
}

Outcome<RunLayout> RunLayout::make(LengthUnit unit, const std::string& pathExpression, RunRadiation radiation) {
    RunLayout layout;
    layout.unit_ = unit;
    layout.radiation_ = radiation;
    layout.columns_.assign(std::begin(kFirstColumns), std::end(kFirstColumns));
    for (const TrajectoryHeaderField& field : kTrajectoryHeaderFields)
        layout.columns_.emplace_back(field.name);
    for (const Measure& measure : allMeasures())
        if (isRunMeasure(measure, radiation))
            layout.columns_.push_back(columnName(measure, unit).toStdString());
    if (pathExpression.empty())
        return layout;
    layout.pathExpression_.setPattern(QString::fromStdString(pathExpression));
    if (!layout.pathExpression_.isValid())
        return Problem(pathExpression + ": " + layout.pathExpression_.errorString().toStdString());
    for (const QString& group : layout.pathExpression_.namedCaptureGroups()) {
        if (group.isEmpty())
            continue;
        const std::string name = group.toStdString();
        if (isTaken(layout.columns_, name))
            return Problem(std::string(pathExpression).append(": there is a column ").append(name).append(" already"));
        layout.fields_.push_back(group);
        layout.columns_.push_back(name);
    }
    if (layout.fields_.empty())
        return Problem(pathExpression + ": names no field, as (?<case>\\d+) does");
    return layout;
}

std::vector<RunValue> RunLayout::pathFields(const std::string& path) const {
    std::vector<RunValue> values(fields_.size());
    if (fields_.empty())
        return values;
    const QRegularExpressionMatch match = pathExpression_.match(QString::fromStdString(path));
    for (std::size_t i = 0; i < fields_.size(); ++i)
        if (match.hasMatch() && !match.captured(fields_[i]).isNull())
            values[i] = valueOf(match.captured(fields_[i]));
    return values;
}
} // namespace sorvane
