// `sorvane report`: makes one page of a set of engagements, with nothing outside it.
#include "reportcommand.h"

#include <filesystem>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "interrupt.h"
#include "reportpage.h"
#include "resultfile.h"
#include "setquestionoptions.h"
#include "shellquote.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
struct ReportOptions {
    std::string path;
    std::string output;
    std::string title;
    SetQuestion question;
    std::string aspectColumn;
    WorstRequest worst;
    bool allowsMissing = false;
};

// The unit that the column's name ends in.
LengthUnit unitOf(const std::string& column) {
    for (const LengthUnit unit : {LengthUnit::Metres, LengthUnit::Feet})
        if (column.ends_with(lengthNameEnding(unit).toStdString()))
            return unit;
    return LengthUnit::Unstated;
}

std::vector<std::string> questionWords(const SetQuestion& question) {
    std::vector<std::string> words;
    const auto add = [&words](const char* option, const std::string& value) {
        if (!value.empty())
            words.insert(words.end(), {option, value});
    };
    add("--where", question.condition);
    add("--by", question.groupColumn);
    add("--column", question.column);
    std::string distances;
    for (const double distance : question.distances)
        distances += (distances.empty() ? "" : ",") + shortestText(distance);
    add("--miss", distances);
    if (question.withFaulty)
        words.emplace_back("--with-faults");
    return words;
}

// The set's, this one, and one that prints the numbers.
std::vector<std::string>
commandsOf(const ReportOptions& options, const std::string& title, std::vector<std::string> commands) {
    const std::vector<std::string> asked = questionWords(options.question);
    std::vector<std::string> stats{"sorvane", "stats", options.path};
    stats.insert(stats.end(), asked.begin(), asked.end());
    std::vector<std::string> report{"sorvane", "report", options.path, "-o", options.output, "--title", title};
    report.insert(report.end(), asked.begin(), asked.end());
    if (!options.aspectColumn.empty())
        report.insert(report.end(), {"--aspect", options.aspectColumn});
    report.insert(
        report.end(),
        {"--worst", options.worst.isGreatest ? "greatest" : "least", "--count", std::to_string(options.worst.count)});
    if (options.worst.hasTerrain)
        report.emplace_back("--terrain");
    commands.push_back(shellCommand(report));
    commands.push_back(shellCommand(stats));
    return commands;
}

ExitStatus report(const ReportOptions& options, Streams& streams) {
    const auto say = [&streams](const std::string& text) {
        streams.err << "sorvane report: " << text << std::endl;
    };
    Outcome<ReportSet> set = readReportSet(options.path, options.question, options.aspectColumn);
    if (!set) {
        say(set.problem().text);
        return ExitStatus::Failed;
    }
    const Interrupt interrupt;
    ReportPage page;
    page.title = options.title.empty() ? std::filesystem::path(options.path).stem().string() : options.title;
    page.worstRequest = options.worst;
    page.worstRequest.unit = unitOf(set->summary.column);
    page.set = *std::move(set);
    page.worst = worstRunsOf(page.set, page.worstRequest, say);
    page.commands = commandsOf(options, page.title, page.set.calls);
    const auto problem = writeResult(options.output, streams, [&page](std::ostream& out) { out << htmlOf(page); });
    if (problem) {
        say(problem->text);
        return ExitStatus::Failed;
    }
    const bool isMissed = !page.worst.isWhole || (!page.worst.isComplete && !options.allowsMissing);
    return isMissed ? ExitStatus::ProblemsFound : ExitStatus::Success;
}
} // namespace

SubCommand addReportCommand(CLI::App& parent) {
    const auto options = std::make_shared<ReportOptions>();
    CLI::App* const parser = parent.add_subcommand(
        "report", "Make one page of a set of engagements: numbers, drawings, all runs in a table, and the worst ones.");
    parser->add_option("SET", options->path, "Table that sorvane runs has made, an .sqlite")->required();
    parser->add_option("-o,--output", options->output, "Page to write, .html; it needs no other file")
        ->type_name("OUT")
        ->required();
    parser->add_option("--title", options->title, "Title; without it the table's name")->type_name("TEXT");
    addSetQuestionOptions(*parser, options->question);
    parser
        ->add_option(
            "--aspect", options->aspectColumn,
            "Column of degrees by which runs lie about the target, 0 ahead (default closest_approach_aspect_deg)")
        ->type_name("COLUMN");
    parser
        ->add_option_function<std::string>(
            "--worst", [options](const std::string& which) { options->worst.isGreatest = which == "greatest"; },
            "Whether the least or the greatest values are the worst")
        ->type_name("WHICH")
        ->default_str("least")
        ->check(CLI::IsMember({"least", "greatest"}));
    parser->add_option("--count", options->worst.count, "How many of the worst runs to show with pictures and plots")
        ->type_name("N")
        ->capture_default_str()
        ->check(CLI::Range(0, 1000));
    parser->add_flag("--terrain", options->worst.hasTerrain, "Draw the terrain in their pictures");
    parser->add_flag(
        "--allow-missing", options->allowsMissing,
        "Give status 0, too, when bodies or terrain are missing, can't be used or have been replaced by the stock "
        "ones");
    return {parser, [options](Streams& streams) {
                return report(*options, streams);
            }};
}
} // namespace sorvane
