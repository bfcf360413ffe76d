// `sorvane measures`: lists what can be measured of an engagement.
#include "measurescommand.h"

#include <memory>
#include <string>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "measure.h"
#include "unitoption.h"

namespace sorvane {
namespace {
constexpr int kLayoutVersion = 1;

struct MeasuresOptions {
    bool isJson = false;
    LengthUnit unit = LengthUnit::Unstated;
};

// By the place of the measure's alternative.
constexpr const char* kHeadings[] = {
    "Of an engagement at a time", "Of a flare at a time", "Of an engagement", "Of a flare"};

void writeText(const MeasuresOptions& options, std::ostream& out) {
    const char* previous = nullptr;
    for (const Measure& measure : allMeasures()) {
        const char* const heading = kHeadings[measure.evaluate.index()];
        if (heading != previous)
            out << (previous != nullptr ? "\n" : "") << heading << '\n';
        previous = heading;
        const std::string unit = unitSymbol(measure.unit, options.unit).toStdString();
        out << "  " << measure.name << (unit.empty() ? "" : " [" + unit + "]") << "\n      " << measure.definition
            << ".\n      " << measure.formula << '\n';
    }
}

void writeJson(const MeasuresOptions& options, std::ostream& out) {
    constexpr int kIndentation = 2;
    nlohmann::ordered_json all{{"layout", kLayoutVersion}, {"measures", nlohmann::ordered_json::array()}};
    for (const Measure& measure : allMeasures())
        all["measures"].push_back(
            {{"name", measure.name},
             {"of", kindOf(measure)},
             {"unit", unitSymbol(measure.unit, options.unit).toStdString()},
             {"column", columnName(measure, options.unit).toStdString()},
             {"definition", measure.definition},
             {"formula", measure.formula},
             {"needs", needOf(measure)}});
    out << all.dump(kIndentation) << '\n';
}
} // namespace

SubCommand addMeasuresCommand(CLI::App& parent) {
    const auto options = std::make_shared<MeasuresOptions>();
    CLI::App* const parser =
        parent.add_subcommand("measures", "List what can be measured of an engagement, with units and formulas.");
    parser->add_flag("--json", options->isJson, "Print one JSON object");
    addUnitOption(*parser, options->unit, "What one of the trajectory's units of length is, to name it");
    return {parser, [options](Streams& streams) {
                options->isJson ? writeJson(*options, streams.out) : writeText(*options, streams.out);
                return ExitStatus::Success;
            }};
}
} // namespace sorvane
