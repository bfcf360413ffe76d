// How the statistics of a set are written for people.
#include "summarytext.h"

#include <cmath>

#include "measuretext.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
constexpr const char* kUndefined = "-";

NamedMeasure named(const std::string& column, double value) {
    return namedMeasure(QString::fromStdString(column), value);
}

std::string percentNumber(double share) {
    constexpr double kPercent = 100.0;
    return QString::number(share * kPercent, 'f', 1).toStdString();
}

struct GroupText {
    std::string operator()(std::monostate /*nothing*/) const { return "none"; }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return shortestText(value); }
    std::string operator()(const std::string& value) const { return value; }
};
} // namespace

std::string columnValueText(const std::string& column, double value) {
    return std::isnan(value) ? kUndefined : named(column, value).text.toStdString();
}

std::string roundValueText(const std::string& column, double value) {
    constexpr double kNoise = 1e9;
    const std::string unit = columnValueText(column, 0.0);
    const std::size_t place = unit.find(' ');
    const std::string number = shortestText(std::round(value * kNoise) / kNoise);
    return number + (place == std::string::npos ? "" : unit.substr(place));
}

std::string columnIntervalText(const std::string& column, const Interval& interval) {
    if (std::isnan(interval.low))
        return {};
    const QString low = named(column, interval.low).text;
    const qsizetype unit = low.indexOf(u' ');
    return (unit < 0 ? low : low.left(unit)).toStdString() + " to " + columnValueText(column, interval.high);
}

std::string columnTitle(const std::string& column) {
    return named(column, 0.0).name.replace(u'_', u' ').toStdString();
}

std::string percentText(double share) {
    return std::isnan(share) ? kUndefined : percentNumber(share) + " %";
}

std::string percentIntervalText(const Interval& interval) {
    return std::isnan(interval.low) ? std::string()
                                    : percentNumber(interval.low) + " to " + percentNumber(interval.high) + " %";
}

std::string countText(const Share& share) {
    return share.of == 0 ? std::string() : std::to_string(share.count) + " of " + std::to_string(share.of);
}

std::string chanceText(double p) {
    return p > 0.0 ? QString::number(p, 'g', 3).toStdString() : "below 1e-300";
}

std::string leftOutText(const RowSummary& summary, const std::string& column) {
    const std::int64_t all = summary.faulty + summary.undefined;
    if (all == 0)
        return {};
    std::string text = std::to_string(all) + (all == 1 ? " run" : " runs") + " left out: ";
    if (summary.faulty > 0)
        text += std::to_string(summary.faulty) + " with faults";
    if (summary.undefined > 0)
        text += (summary.faulty > 0 ? ", " : "") + std::to_string(summary.undefined) + " without " + column;
    return text;
}

std::string groupText(const RunValue& value) {
    return std::visit(GroupText(), value);
}
} // namespace sorvane
