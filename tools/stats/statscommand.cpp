// `sorvane stats`: answers what a set of engagements comes to.
#include "statscommand.h"

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "setquestionoptions.h"
#include "statsreport.h"

namespace sorvane {
namespace {
struct StatsOptions {
    std::string path;
    SetQuestion question;
    std::string other;
    std::optional<std::string> otherCondition; // that of the question when it isn't given
    bool isJson = false;
    bool isCsv = false;
};

Outcome<AskedSet> ask(const std::string& path, const SetQuestion& question) {
    const Outcome<RunReader> reader = RunReader::open(path);
    if (!reader)
        return reader.problem();
    Outcome<SetSummary> summary = summaryOf(*reader, question);
    if (!summary)
        return summary.problem();
    return AskedSet{path, question, *std::move(summary)};
}

Outcome<StatsReport> reportOf(const StatsOptions& options) {
    if (options.other.empty() && options.otherCondition)
        return Problem("--against-where is for --against");
    if (!options.other.empty() && !options.question.groupColumn.empty())
        return Problem("--by and --against don't go together; --where tells groups apart, too");
    Outcome<AskedSet> set = ask(options.path, options.question);
    if (!set)
        return set.problem();
    StatsReport report{*std::move(set), std::nullopt, std::nullopt};
    if (options.other.empty())
        return report;
    SetQuestion question = options.question;
    question.condition = options.otherCondition.value_or(question.condition);
    Outcome<AskedSet> other = ask(options.other, question);
    if (!other)
        return other.problem();
    if (other->summary.column != report.set.summary.column)
        return Problem(
            options.other + ": has " + other->summary.column + " where " + options.path + " has " +
            report.set.summary.column);
    report.other = *std::move(other);
    report.difference = differenceOf(report.set.summary.all, report.other->summary.all);
    return report;
}
} // namespace

SubCommand addStatsCommand(CLI::App& parent) {
    const auto options = std::make_shared<StatsOptions>();
    CLI::App* const parser = parent.add_subcommand(
        "stats", "Tell what a set of engagements comes to: miss distances, shares and their intervals.");
    parser->add_option("SET", options->path, "Table that sorvane runs has made, an .sqlite")->required();
    addSetQuestionOptions(*parser, options->question);
    parser->add_option("--against", options->other, "Another set to compare with")->type_name("SET");
    parser
        ->add_option(
            "--against-where", options->otherCondition,
            "Condition for the rows of the other set (default: that of --where)")
        ->type_name("SQL");
    CLI::Option* const json = parser->add_flag("--json", options->isJson, "Print one JSON object");
    parser->add_flag("--csv", options->isCsv, "Print a table with a row for each statistic")->excludes(json);
    return {parser, [options](Streams& streams) {
                const Outcome<StatsReport> report = reportOf(*options);
                if (!report) {
                    streams.err << "sorvane stats: " << report.problem().text << std::endl;
                    return ExitStatus::Failed;
                }
                const auto write = options->isJson ? writeJson : options->isCsv ? writeCsv : writeText;
                write(*report, streams.out);
                return ExitStatus::Success;
            }};
}
} // namespace sorvane
