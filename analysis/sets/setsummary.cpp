// What a set of engagements comes to: how far they missed, how many within a distance, how many were decoyed.
#include "setsummary.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "summarytext.h"

namespace sorvane {
namespace {
constexpr std::size_t kMostGroups = 1000;

// NaN of what is no number.
struct NumberIn {
    double operator()(std::int64_t value) const { return static_cast<double>(value); }
    double operator()(double value) const { return value; }
    template <class Other> double operator()(const Other& /*other*/) const { return std::nan(""); }
};
double numberIn(const RunValue& value) {
    return std::visit(NumberIn(), value);
}

struct IsGroupBefore {
    bool operator()(const RunValue& a, const RunValue& b) const {
        const bool areNumbers = !std::isnan(numberIn(a)) && !std::isnan(numberIn(b));
        return areNumbers ? numberIn(a) < numberIn(b) : a < b; // nothing, integers, other numbers, texts
    }
};

struct CountedRow {
    double value = 0.0;
    bool isFaulty = false;
    double decoyed = 0.0;
};

void add(RowSummary& summary, const CountedRow& row, const SetQuestion& question) {
    ++summary.rows;
    if (row.isFaulty && !question.withFaulty) {
        ++summary.faulty;
        return;
    }
    if (std::isnan(row.value)) {
        ++summary.undefined;
        return;
    }
    summary.values.push_back(row.value);
    if (std::isnan(row.decoyed))
        return;
    ++summary.decoyed.of;
    summary.decoyed.count += row.decoyed != 0.0 ? 1 : 0;
}

void finish(RowSummary& summary, const SetQuestion& question) {
    std::vector<double>& values = summary.values;
    std::ranges::sort(values);
    summary.mean = meanOf(values);
    summary.deviation = standardDeviationOf(values);
    summary.median = medianInterval(values);
    for (const double distance : question.distances)
        summary.within.push_back(
            {std::ranges::upper_bound(values, distance) - values.begin(), static_cast<std::int64_t>(values.size())});
}

ShareDifference differenceOf(const Share& a, const Share& b) {
    return {a.value() - b.value(), newcombeInterval(a, b)};
}
} // namespace

Outcome<SetSummary> summaryOf(const RunReader& reader, const SetQuestion& question) {
    SetSummary summary;
    summary.column = question.column.empty() ? reader.missColumn() : question.column;
    if (summary.column.empty())
        return Problem(reader.path() + ": has no column of miss distances");
    std::vector<std::string> columns{summary.column};
    const auto place = [&](const std::string& name) -> std::size_t {
        if (name.empty() || (name != question.groupColumn && !reader.hasColumn(name)))
            return 0; // without it
        columns.push_back(name);
        return columns.size() - 1;
    };
    const std::size_t faults = place("faults");
    const std::size_t decoyed = place("decoyed");
    const std::size_t group = place(question.groupColumn);
    std::map<RunValue, RowSummary, IsGroupBefore> groups;
    const auto problem = reader.read(columns, question.condition, [&](std::span<const RunValue> row) {
        const CountedRow counted{
            numberIn(row[0]), faults != 0 && numberIn(row[faults]) > 0.0,
            decoyed != 0 ? numberIn(row[decoyed]) : std::nan("")};
        add(summary.all, counted, question);
        if (group != 0 && groups.size() <= kMostGroups)
            add(groups[row[group]], counted, question);
    });
    if (problem)
        return *problem;
    if (groups.size() > kMostGroups)
        return Problem(
            reader.path() + ": " + question.groupColumn + " has more than " + std::to_string(kMostGroups) + " values");
    if (summary.all.values.empty()) {
        const std::string leftOut = leftOutText(summary.all, summary.column);
        return Problem(reader.path() + ": there is no run to count" + (leftOut.empty() ? "" : "; " + leftOut));
    }
    finish(summary.all, question);
    for (auto& [value, rows] : groups) {
        rows.group = value;
        finish(rows, question);
        summary.groups.push_back(std::move(rows));
    }
    return summary;
}

SetDifference differenceOf(const RowSummary& a, const RowSummary& b) {
    SetDifference difference;
    for (std::size_t i = 0; i < a.within.size(); ++i)
        difference.within.push_back(differenceOf(a.within[i], b.within[i]));
    difference.decoyed = differenceOf(a.decoyed, b.decoyed);
    difference.median = medianOf(a.values) - medianOf(b.values);
    difference.medianInterval = medianDifferenceInterval(a.values, b.values);
    difference.kolmogorovSmirnov = kolmogorovSmirnov(a.values, b.values);
    difference.mannWhitney = mannWhitney(a.values, b.values);
    return difference;
}

} // namespace sorvane
