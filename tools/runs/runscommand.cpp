// `sorvane runs`: makes a table with a row for each engagement of a set.
#include "runscommand.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <CLI/CLI.hpp>
#include <malloc.h>

#include "filesearch.h"
#include "interrupt.h"
#include "progressbar.h"
#include "radiometryoptions.h"
#include "readahead.h"
#include "runreading.h"
#include "runsink.h"
#include "shard.h"
#include "shellquote.h"
#include "survey.h"
#include "unitoption.h"

namespace sorvane {
namespace {
struct RunsOptions {
    std::vector<std::string> paths;
    std::string output;
    std::string pathExpression;
    LengthUnit unit = LengthUnit::Unstated;
    std::string shard; // by the environment when empty
    bool isMerge = false;
    bool hasRadiation = false;
    RadiometryOptions radiometry;
};

constexpr const char* kCommand = "sorvane runs";

ExitStatus failed(Streams& streams, const Problem& problem) {
    streams.err << kCommand << ": " << problem.text << std::endl;
    return ExitStatus::Failed;
}

// Tells of the first files with faults, and how many more there are.
class FaultLines {
public:
    explicit FaultLines(std::ostream& err) : err_(err) {}

    void add(const RunRow& row) {
        const auto* const count = std::get_if<std::int64_t>(&row.values[0]);
        const auto* const fault = std::get_if<std::string>(&row.values[1]);
        if (count == nullptr || *count == 0 || fault == nullptr)
            return;
        if (++files_ <= kMostLines)
            err_ << kCommand << ": " << row.path << ": " << *fault
                 << (*count > 1 ? ", and " + std::to_string(*count - 1) + " more faults" : "") << '\n';
    }
    void finish() {
        if (files_ > kMostLines)
            err_ << kCommand << ": and " << files_ - kMostLines << " more files have faults\n";
    }
    bool areAny() const { return files_ > 0; }

private:
    static constexpr std::int64_t kMostLines = 20;

    std::ostream& err_;
    std::int64_t files_ = 0;
};

// Puts rows into the sink, some at a time: each batch is one transaction.
class Batches {
public:
    explicit Batches(RunSink& sink) : sink_(sink) {}

    std::optional<Problem> add(RunRow row) {
        constexpr std::size_t kMostRows = 500;
        constexpr std::chrono::seconds kMostTime{1};
        rows_.push_back(std::move(row));
        if (rows_.size() < kMostRows && Clock::now() < began_ + kMostTime)
            return std::nullopt;
        return flush();
    }
    std::optional<Problem> flush() {
        began_ = Clock::now();
        return sink_.put(std::exchange(rows_, {}));
    }

private:
    using Clock = std::chrono::steady_clock;

    RunSink& sink_;
    std::vector<RunRow> rows_;
    Clock::time_point began_ = Clock::now();
};

// What a file's samples took serves the next one's, instead of going back to the system and coming anew, cleared.
void keepFreedMemory() {
    constexpr int kMostBytes = 1 << 25; // of a block; the greatest that the allocator takes
    ::mallopt(M_MMAP_THRESHOLD, kMostBytes);
    ::mallopt(M_TRIM_THRESHOLD, 2 * kMostBytes);
}

ExitStatus surveyInto(
    RunSink& sink, const std::vector<std::string>& files, const RunLayout& layout, const RunsOptions& options,
    Streams& streams) {
    keepFreedMemory();
    const Interrupt interrupt;
    ProgressBar bar(streams, static_cast<std::int64_t>(files.size()), "files");
    FaultLines faults(streams.err);
    Batches batches(sink);
    std::optional<RunRadiometry> radiometry;
    if (options.hasRadiation)
        radiometry.emplace(options.radiometry);
    std::optional<Problem> problem;
    std::int64_t done = 0;
    survey(
        files.size(), usableProcessors(),
        [&](std::size_t number) { return readRun(files[number], layout, radiometry ? &*radiometry : nullptr); },
        [&](RunRow row) {
            faults.add(row);
            problem = batches.add(std::move(row));
            bar.show(++done);
            return !problem && Interrupt::requested() == 0;
        });
    bar.clear();
    if (!problem)
        problem = batches.flush();
    if (!problem && Interrupt::requested() != 0)
        problem = Problem(
            options.output + ": interrupted after " + std::to_string(done) + " of " + std::to_string(files.size()) +
            " files");
    if (!problem)
        problem = sink.finish();
    faults.finish();
    if (problem)
        return failed(streams, *problem);
    const std::int64_t lacking = radiometry ? radiometry->lacking.load() : 0;
    if (lacking > 0)
        streams.err << kCommand << ": the files of the target of " << lacking
                    << (lacking == 1 ? " engagement" : " engagements")
                    << " can't be used: what is measured of its radiation is empty\n";
    return faults.areAny() || lacking > 0 ? ExitStatus::ProblemsFound : ExitStatus::Success;
}

std::string callOf(const RunsOptions& options) {
    std::vector<std::string> words{"sorvane", "runs"};
    words.insert(words.end(), options.paths.begin(), options.paths.end());
    words.insert(words.end(), {"-o", options.output});
    if (options.isMerge)
        words.emplace_back("--merge");
    if (!options.pathExpression.empty())
        words.insert(words.end(), {"--name", options.pathExpression});
    if (options.unit != LengthUnit::Unstated)
        words.insert(words.end(), {"--unit", options.unit == LengthUnit::Feet ? "ft" : "m"});
    if (options.hasRadiation)
        words.emplace_back("--radiometry");
    spellOut(options.radiometry, words);
    if (!options.shard.empty())
        words.insert(words.end(), {"--shard", options.shard});
    return shellCommand(words);
}

ExitStatus runs(const RunsOptions& options, Streams& streams) {
    if (options.isMerge) {
        const auto problem = mergeRuns(options.paths, options.output, callOf(options));
        return problem ? failed(streams, *problem) : ExitStatus::Success;
    }
    const Outcome<Shard> shard = options.shard.empty() ? Outcome(shardOfArrayTask()) : shardOf(options.shard);
    if (!shard)
        return failed(streams, shard.problem());
    if (options.hasRadiation && options.unit == LengthUnit::Unstated)
        return failed(streams, "--radiometry needs --unit");
    const Outcome<RunLayout> layout = RunLayout::make(
        options.unit, options.pathExpression, options.hasRadiation ? RunRadiation::With : RunRadiation::Without);
    if (!layout)
        return failed(streams, layout.problem());
    const FoundFiles found = findFiles(options.paths, kCommand, streams.err);
    std::vector<std::string> files;
    for (const FoundFile& file : found.files)
        if (file.kind == FileKind::Trajectory || std::ranges::find(options.paths, file.path) != options.paths.end())
            files.push_back(file.path);
    const auto sink = openRunSink(options.output, layout->columns(), {callOf(options)});
    if (!sink)
        return failed(streams, sink.problem());
    files = shardFiles(std::move(files), *shard);
    std::erase_if(files, [&](const std::string& path) { return (*sink)->has(path); });
    const ExitStatus status = surveyInto(**sink, files, *layout, options, streams);
    return status == ExitStatus::Success && !found.isComplete ? ExitStatus::ProblemsFound : status;
}
} // namespace

SubCommand addRunsCommand(CLI::App& parent) {
    const auto options = std::make_shared<RunsOptions>();
    CLI::App* const parser =
        parent.add_subcommand("runs", "Make a table with a row for each engagement of a set, or join such tables.");
    parser
        ->add_option(
            "PATH", options->paths, "Trajectories, and directories with trajectories below them; with --merge, tables")
        ->required();
    parser
        ->add_option(
            "-o,--output", options->output,
            "Table to write: .sqlite, .csv or .jsonl. An .sqlite keeps the rows of files that are as they were, so "
            "that a call that was cut off goes on")
        ->type_name("OUT")
        ->required();
    parser
        ->add_option(
            "--name", options->pathExpression,
            "Regular expression for the path whose named groups become columns: 'case(?<case>\\d+)_(?<pattern>\\w+)'")
        ->type_name("EXPRESSION");
    addUnitOption(*parser, options->unit, "What one of the trajectories' units of length is");
    parser->add_flag(
        "--radiometry", options->hasRadiation,
        "Columns of what is measured of the target's radiation and the flares', which takes about a second a file; "
        "needs "
        "--unit");
    addRadiometryOptions(*parser, options->radiometry);
    parser
        ->add_option(
            "--shard", options->shard,
            "The part of the sorted files to read: 2/8 is the second of eight. Without it that of the task of a Slurm "
            "job array, else all")
        ->type_name("I/N");
    parser->add_flag("--merge", options->isMerge, "Join .sqlite tables of parts into one");
    return {parser, [options](Streams& streams) {
                return runs(*options, streams);
            }};
}
} // namespace sorvane
