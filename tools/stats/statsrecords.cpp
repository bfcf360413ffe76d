// The statistics of a set as JSON and as a table.
#include <cmath>

#include <nlohmann/json.hpp>

#include "csvtext.h"
#include "shortestnumber.h"
#include "statsreport.h"
#include "summarytext.h"

namespace sorvane {
namespace {
using Json = nlohmann::ordered_json;

constexpr int kLayoutVersion = 1;

Json numberOrNull(double value) {
    return std::isfinite(value) ? Json(value) : Json();
}

Json jsonOf(const Interval& interval) {
    return std::isnan(interval.low) ? Json() : Json{interval.low, interval.high};
}

Json jsonOf(const Share& share) {
    return {
        {"count", share.count},
        {"of", share.of},
        {"share", numberOrNull(share.value())},
        {"interval", jsonOf(wilsonInterval(share))}};
}

Json jsonOf(const ShareDifference& difference) {
    return {{"difference", numberOrNull(difference.value)}, {"interval", jsonOf(difference.interval)}};
}

struct JsonValue {
    Json operator()(std::monostate /*nothing*/) const { return nullptr; }
    template <class Value> Json operator()(const Value& value) const { return value; }
};

Json jsonOf(const RowSummary& rows, const std::vector<double>& distances) {
    Json record{
        {"runs", rows.rows},
        {"with_faults", rows.faulty},
        {"undefined", rows.undefined},
        {"n", rows.values.size()},
        {"mean", numberOrNull(rows.mean)},
        {"standard_deviation", numberOrNull(rows.deviation)},
        {"quantiles", Json::array()},
        {"median_interval", jsonOf(rows.median)},
        {"within", Json::array()}};
    for (const double share : kWrittenQuantiles)
        record["quantiles"].push_back({{"at", share}, {"value", numberOrNull(quantileOf(rows.values, share))}});
    for (std::size_t i = 0; i < rows.within.size(); ++i) {
        Json within{{"distance", distances[i]}};
        within.update(jsonOf(rows.within[i]));
        record["within"].push_back(std::move(within));
    }
    record["decoyed"] = jsonOf(rows.decoyed);
    return record;
}

Json jsonOf(const AskedSet& set) {
    Json record{{"path", set.path}, {"where", set.question.condition}, {"column", set.summary.column}};
    record.update(jsonOf(set.summary.all, set.question.distances));
    if (set.question.groupColumn.empty())
        return record;
    record["by"] = set.question.groupColumn;
    record["groups"] = Json::array();
    for (const RowSummary& group : set.summary.groups) {
        Json of{{"value", std::visit(JsonValue(), group.group)}};
        of.update(jsonOf(group, set.question.distances));
        record["groups"].push_back(std::move(of));
    }
    return record;
}

Json jsonOf(const SetDifference& difference, const std::vector<double>& distances) {
    Json record{
        {"median", difference.median},
        {"median_interval", jsonOf(difference.medianInterval)},
        {"within", Json::array()}};
    for (std::size_t i = 0; i < distances.size(); ++i) {
        Json within{{"distance", distances[i]}};
        within.update(jsonOf(difference.within[i]));
        record["within"].push_back(std::move(within));
    }
    record["decoyed"] = jsonOf(difference.decoyed);
    const KolmogorovSmirnov& curves = difference.kolmogorovSmirnov;
    record["kolmogorov_smirnov"] = {{"distance", curves.distance}, {"p", curves.p}, {"exact", curves.isExact}};
    const MannWhitney& ranks = difference.mannWhitney;
    record["mann_whitney"] = {{"greater", ranks.greater}, {"p", ranks.p}, {"exact", ranks.isExact}};
    return record;
}

// A row of the table; what isn't finite stays empty.
struct CsvRow {
    std::string statistic;
    double at = std::nan("");
    double value = std::nan("");
    Interval interval{std::nan(""), std::nan("")};
    std::string of{};
};

class CsvTable {
public:
    explicit CsvTable(std::ostream& out) : out_(out) { out_ << "set,group,statistic,at,value,low,high,of\n"; }

    void begin(const std::string& set, const std::string& group) { key_ = csvText(set) + ',' + csvText(group) + ','; }
    void add(const CsvRow& row) {
        out_ << key_ << row.statistic << ',' << number(row.at) << ',' << number(row.value) << ','
             << number(row.interval.low) << ',' << number(row.interval.high) << ',' << row.of << '\n';
    }
    void add(const char* statistic, double at, const Share& share) {
        add({statistic, at, share.value(), wilsonInterval(share), std::to_string(share.of)});
    }

private:
    static std::string number(double value) { return std::isfinite(value) ? shortestText(value) : std::string(); }

    std::ostream& out_;
    std::string key_;
};

void addRows(CsvTable& table, const RowSummary& rows, const std::vector<double>& distances) {
    const double none = std::nan("");
    const std::string n = std::to_string(rows.values.size());
    table.add({.statistic = "runs", .value = static_cast<double>(rows.rows)});
    table.add({.statistic = "with_faults", .value = static_cast<double>(rows.faulty)});
    table.add({.statistic = "undefined", .value = static_cast<double>(rows.undefined)});
    table.add({.statistic = "mean", .value = rows.mean, .of = n});
    table.add({.statistic = "standard_deviation", .value = rows.deviation, .of = n});
    for (const double share : kWrittenQuantiles)
        table.add(
            {"quantile", share, quantileOf(rows.values, share), share == 0.5 ? rows.median : Interval{none, none}, n});
    for (std::size_t i = 0; i < distances.size(); ++i)
        table.add("within", distances[i], rows.within[i]);
    table.add("decoyed", none, rows.decoyed);
}

void addSet(CsvTable& table, const AskedSet& set) {
    table.begin(set.path, "");
    addRows(table, set.summary.all, set.question.distances);
    for (const RowSummary& group : set.summary.groups) {
        table.begin(set.path, groupText(group.group));
        addRows(table, group, set.question.distances);
    }
}
} // namespace

void writeJson(const StatsReport& report, std::ostream& out) {
    constexpr int kIndentation = 2;
    Json record{{"layout", kLayoutVersion}, {"confidence", kConfidence}, {"set", jsonOf(report.set)}};
    if (report.other)
        record["against"] = jsonOf(*report.other);
    if (report.difference)
        record["difference"] = jsonOf(*report.difference, report.set.question.distances);
    out << record.dump(kIndentation, ' ', false, Json::error_handler_t::replace) << '\n';
}

void writeCsv(const StatsReport& report, std::ostream& out) {
    CsvTable table(out);
    addSet(table, report.set);
    if (report.other)
        addSet(table, *report.other);
    if (!report.difference)
        return;
    const SetDifference& difference = *report.difference;
    table.begin("difference", "");
    table.add({.statistic = "quantile", .at = 0.5, .value = difference.median, .interval = difference.medianInterval});
    for (std::size_t i = 0; i < difference.within.size(); ++i)
        table.add(
            {.statistic = "within",
             .at = report.set.question.distances[i],
             .value = difference.within[i].value,
             .interval = difference.within[i].interval});
    table.add({.statistic = "decoyed", .value = difference.decoyed.value, .interval = difference.decoyed.interval});
    table.add({.statistic = "kolmogorov_smirnov_distance", .value = difference.kolmogorovSmirnov.distance});
    table.add({.statistic = "kolmogorov_smirnov_p", .value = difference.kolmogorovSmirnov.p});
    table.add({.statistic = "mann_whitney_greater", .value = difference.mannWhitney.greater});
    table.add({.statistic = "mann_whitney_p", .value = difference.mannWhitney.p});
}
} // namespace sorvane
