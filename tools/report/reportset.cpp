// The runs of a set as a report shows them.
#include "reportset.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "measure.h"
#include "summarytext.h"
#include "trajectoryheaderfields.h"

namespace sorvane {
namespace {
// The names of the files, times and the fields of the header tell runs apart no better than the path does.
bool isShown(const std::string& column) {
    const auto isColumn = [&column](const auto& name) {
        return column == name;
    };
    return column != "file_bytes" && column != "file_modified_ns" && column != "start_s" && column != "end_s" &&
           std::ranges::none_of(kTrajectoryHeaderFields, isColumn, &TrajectoryHeaderField::name);
}

double numberOf(const RunValue& value) {
    if (const auto* const number = std::get_if<double>(&value))
        return *number;
    const auto* const integer = std::get_if<std::int64_t>(&value);
    return integer != nullptr ? static_cast<double>(*integer) : std::nan("");
}

// The values of a row by the names of the columns that were asked for.
class NamedRow {
public:
    NamedRow(const std::map<std::string, std::size_t>& places, std::span<const RunValue> row)
        : places_(places), row_(row) {}

    RunValue value(const std::string& column) const {
        const auto place = places_.find(column);
        return place == places_.end() ? RunValue() : row_[place->second];
    }
    double number(const std::string& column) const { return numberOf(value(column)); }

private:
    const std::map<std::string, std::size_t>& places_;
    std::span<const RunValue> row_;
};
} // namespace

bool ReportColumn::isText() const {
    return std::ranges::any_of(
        values, [](const RunValue& value) { return std::holds_alternative<std::string>(value); });
}

Outcome<ReportSet>
readReportSet(const std::string& path, const SetQuestion& question, const std::string& aspectColumn) {
    const Outcome<RunReader> reader = RunReader::open(path);
    if (!reader)
        return reader.problem();
    Outcome<SetSummary> summary = summaryOf(*reader, question);
    if (!summary)
        return summary.problem();
    const std::string column = summary->column;
    ReportSet set{path, reader->calls(), question, aspectColumn, *std::move(summary), {}, {}};
    const std::string usualAspect =
        columnName(*findMeasure("closest-approach-aspect"), LengthUnit::Unstated).toStdString();
    if (set.aspectColumn.empty() && reader->hasColumn(usualAspect))
        set.aspectColumn = usualAspect;
    else if (!set.aspectColumn.empty() && !reader->hasColumn(set.aspectColumn))
        return Problem(path + ": there is no column " + set.aspectColumn);
    std::map<std::string, std::size_t> places;
    for (const std::string& name : reader->columns())
        places.emplace(name, places.size());
    // What tells most comes first.
    const auto show = [&set](const std::string& name) {
        if (std::ranges::find(set.columns, name, &ReportColumn::name) == set.columns.end())
            set.columns.push_back({name, {}});
    };
    for (const std::string& name :
         {std::string("path"), question.groupColumn, column, std::string("decoyed"), set.aspectColumn})
        if (places.contains(name))
            show(name);
    for (const std::string& name : reader->columns())
        if (isShown(name))
            show(name);
    const std::string timeColumn =
        columnName(*findMeasure("closest-approach-time"), LengthUnit::Unstated).toStdString();
    auto problem = reader->read(reader->columns(), question.condition, [&](std::span<const RunValue> values) {
        const NamedRow row(places, values);
        for (ReportColumn& shown : set.columns)
            shown.values.push_back(row.value(shown.name));
        const bool isFaulty = row.number("faults") > 0.0 && !question.withFaulty;
        if (isFaulty || std::isnan(row.number(column)))
            return;
        const RunValue name = row.value("path");
        const auto* const text = std::get_if<std::string>(&name);
        const auto integer = [&row](const char* key) {
            const RunValue value = row.value(key);
            const auto* const number = std::get_if<std::int64_t>(&value);
            return number != nullptr ? *number : 0;
        };
        set.runs.push_back(
            {text != nullptr ? *text : std::string(),
             {integer("file_bytes"), integer("file_modified_ns")},
             row.number(column),
             row.number("decoyed"),
             row.number(set.aspectColumn),
             row.number(timeColumn),
             question.groupColumn.empty() ? std::string() : groupText(row.value(question.groupColumn))});
    });
    if (problem)
        return *problem;
    std::erase_if(set.columns, [](const ReportColumn& shown) {
        return std::ranges::all_of(shown.values, [](const RunValue& value) { return value == RunValue(); });
    });
    return set;
}
} // namespace sorvane
