// `sorvane check`: tells what is wrong with files.
#include "checkcommand.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "checkrun.h"
#include "filesearch.h"
#include "picturesize.h"
#include "progressbar.h"

namespace sorvane {
namespace {
struct CheckOptions {
    std::vector<std::string> paths;
    std::string movieSize;
    bool printsAll = false;
    bool isStrict = false;
    bool isJson = false;
};

// Prints findings as they come, or keeps them for a record at the end.
class Report {
public:
    Report(const CheckOptions& options, Streams& streams) : options_(options), streams_(streams) {}

    void add(const std::vector<Finding>& findings) {
        for (const Finding& finding : findings) {
            ++(finding.severity == Severity::Error ? errors_ : warnings_);
            if (options_.isJson)
                records_.push_back(
                    {{"file", finding.file},
                     {"line", finding.place.line},
                     {"column", finding.place.column},
                     {"severity", nameOf(finding.severity)},
                     {"text", finding.text}});
            else
                streams_.out << findingLine(finding) << '\n';
        }
        streams_.out.flush();
    }

    void finish() const {
        if (!options_.isJson)
            return;
        const nlohmann::ordered_json report = {{"errors", errors_}, {"warnings", warnings_}, {"findings", records_}};
        // A file's name and its words may hold any bytes.
        streams_.out << report.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    }

    bool hasProblems() const { return errors_ > 0 || (options_.isStrict && warnings_ > 0); }

private:
    const CheckOptions& options_;
    Streams& streams_;
    std::int64_t errors_ = 0;
    std::int64_t warnings_ = 0;
    nlohmann::ordered_json records_ = nlohmann::ordered_json::array();
};

void checkMovieSize(const std::string& text, Report& report) {
    const std::optional<sorvane::Problem> problem = movieSizeProblem(pictureSizeOf(text).value_or(QSize()));
    if (!problem)
        return;
    FindingList findings("--for-movie " + text, false);
    findings.error({}, "sizes", problem->text);
    report.add(findings.take());
}

ExitStatus check(const CheckOptions& options, Streams& streams) {
    const auto [files, isComplete] = findFiles(options.paths, "sorvane check", streams.err);
    Report report(options, streams);
    if (!options.movieSize.empty())
        checkMovieSize(options.movieSize, report);
    ProgressBar progress(streams, static_cast<std::int64_t>(files.size()), "files");
    CheckRun run(options.printsAll, [&](const std::vector<Finding>& findings) {
        progress.clear();
        report.add(findings);
    });
    std::int64_t done = 0;
    for (const auto& [path, kind] : files) {
        progress.show(done++);
        if (path == "-")
            run.checkStandardInput();
        else
            run.checkFile(path, kind);
    }
    progress.clear();
    report.finish();
    if (!isComplete)
        return ExitStatus::Failed;
    return report.hasProblems() ? ExitStatus::ProblemsFound : ExitStatus::Success;
}
} // namespace

SubCommand addCheckCommand(CLI::App& parent) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* const parser = parent.add_subcommand(
        "check", "Tell what is wrong with trajectories, models and terrain, and with the files that they name.");
    parser->add_option("PATH", options->paths, "Files and directories to check; - is a trajectory from standard input");
    parser
        ->add_option(
            "--for-movie", options->movieSize, "Check, too, whether a movie can have this size, for example 640x480")
        ->type_name("WxH")
        ->check([](const std::string& text) {
            return pictureSizeOf(text) ? "" : "width and height in pixels are wanted, such as 640x480";
        });
    parser->add_flag("--all", options->printsAll, "Print every finding, and not only the first 20 of a kind in a file");
    parser->add_flag("--strict", options->isStrict, "Let warnings, too, give status 1");
    parser->add_flag("--json", options->isJson, "Print the findings as a JSON record");
    parser->footer("Prints a line for each finding: \"file:line:column: error: text\", or \"warning\" for \"error\".\n"
                   "Status: 0 when there are no errors, 1 when there are, 2 when a PATH can't be read.");
    parser->callback([options] {
        if (options->paths.empty() && options->movieSize.empty())
            throw CLI::RequiredError("PATH");
    });
    return {parser, [options](Streams& streams) {
                return check(*options, streams);
            }};
}
} // namespace sorvane
