// `sorvane check`: tells what is wrong with files.
#include "checkcommand.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
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

std::string counted(std::int64_t count, const char* thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

// Keeps findings for the end, where the same warning in many files is one line; prints them as they come when all are
// asked for.
class Report {
public:
    Report(const CheckOptions& options, Streams& streams) : options_(options), streams_(streams) {}

    void add(std::vector<Finding> findings) {
        for (Finding& finding : findings) {
            (finding.severity == Severity::Error ? errors_ : warnings_) += finding.count;
            if (options_.isJson)
                addRecord(finding);
            else if (options_.printsAll)
                streams_.out << findingLine(finding) << std::endl;
            else
                keep(std::move(finding));
        }
    }

    void finish(std::size_t files) {
        for (Line& line : lines_) {
            if (line.otherFiles > 0)
                line.finding.text += " (and in " + counted(line.otherFiles, "more file") + ")";
            streams_.out << findingLine(line.finding) << '\n';
        }
        if (options_.isJson)
            writeRecords();
        streams_.out.flush();
        streams_.err << counted(static_cast<std::int64_t>(files), "file") << ": " << counted(errors_, "error") << ", "
                     << counted(warnings_, "warning") << std::endl;
    }

    bool hasProblems() const { return errors_ > 0 || (options_.isStrict && warnings_ > 0); }

private:
    struct Line {
        Finding finding;
        std::int64_t otherFiles = 0; // with the same warning
        std::string lastFile;        // of these
    };

    void keep(Finding finding) {
        if (finding.severity == Severity::Warning) {
            const auto [known, isNew] = firstLines_.try_emplace(finding.text, lines_.size());
            if (!isNew && lines_[known->second].finding.file != finding.file) {
                Line& first = lines_[known->second];
                first.otherFiles += first.lastFile == finding.file ? 0 : 1;
                first.lastFile = finding.file;
                return;
            }
        }
        lines_.push_back({std::move(finding), 0, {}});
    }

    void addRecord(const Finding& finding) {
        records_.push_back(
            {{"file", finding.file},
             {"line", finding.place.line},
             {"column", finding.place.column},
             {"severity", nameOf(finding.severity)},
             {"text", finding.text}});
    }

    void writeRecords() const {
        const nlohmann::ordered_json report = {{"errors", errors_}, {"warnings", warnings_}, {"findings", records_}};
        // A file's name and its words may hold any bytes.
        streams_.out << report.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << '\n';
    }

    const CheckOptions& options_;
    Streams& streams_;
    std::int64_t errors_ = 0;
    std::int64_t warnings_ = 0;
    std::vector<Line> lines_;
    std::map<std::string, std::size_t> firstLines_; // of each warning, in lines_
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
    CheckRun run(options.printsAll, [&](std::vector<Finding> findings) {
        progress.clear();
        report.add(std::move(findings));
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
    report.finish(run.checkedFiles());
    if (!isComplete || (files.empty() && options.movieSize.empty()))
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
    parser->footer(
        "Prints a line for each finding: \"file:line:column: error: text\", or \"warning\" for \"error\"; the same\n"
        "warning in many files is one line, and --all prints each. The last line, on standard error, counts.\n"
        "Status: 0 when there are no errors, 1 when there are, 2 when a PATH can't be read or there is\n"
        "nothing to check.");
    parser->callback([options] {
        if (options->paths.empty() && options->movieSize.empty())
            throw CLI::RequiredError("PATH");
    });
    return {parser, [options](Streams& streams) {
                return check(*options, streams);
            }};
}
} // namespace sorvane
