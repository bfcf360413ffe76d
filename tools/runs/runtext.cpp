// Rows of a set as lines of text.
#include "runtext.h"

#include <nlohmann/json.hpp>

#include "csvtext.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
struct CsvValue {
    std::string operator()(std::monostate /*nothing*/) const { return {}; }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return shortestText(value); }
    std::string operator()(const std::string& value) const { return csvText(value); }
};

struct JsonValue {
    nlohmann::ordered_json operator()(std::monostate /*nothing*/) const { return nullptr; }
    template <class Value> nlohmann::ordered_json operator()(const Value& value) const { return value; }
};

// The values of the key's columns and of the others.
std::vector<RunValue> valuesOf(const RunRow& row) {
    std::vector<RunValue> values{row.path, row.stamp.bytes, row.stamp.modifiedNanoseconds};
    values.insert(values.end(), row.values.begin(), row.values.end());
    return values;
}

std::vector<std::string> namesOf(const std::vector<std::string>& columns) {
    std::vector<std::string> names(std::begin(kRunKeyColumns), std::end(kRunKeyColumns));
    names.insert(names.end(), columns.begin(), columns.end());
    return names;
}
} // namespace

std::string runHeading(RunFormat format, const std::vector<std::string>& columns) {
    if (format == RunFormat::JsonLines)
        return {};
    std::string line;
    for (const std::string& name : namesOf(columns))
        line += (line.empty() ? "" : ",") + csvText(name);
    return line + '\n';
}

std::string runLine(RunFormat format, const std::vector<std::string>& columns, const RunRow& row) {
    const std::vector<RunValue> values = valuesOf(row);
    if (format == RunFormat::Csv) {
        std::string line;
        for (std::size_t i = 0; i < values.size(); ++i)
            line += (i == 0 ? "" : ",") + std::visit(CsvValue(), values[i]);
        return line + '\n';
    }
    const std::vector<std::string> names = namesOf(columns);
    nlohmann::ordered_json record;
    for (std::size_t i = 0; i < values.size(); ++i)
        record[names[i]] = std::visit(JsonValue(), values[i]);
    return record.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + '\n';
}
} // namespace sorvane
