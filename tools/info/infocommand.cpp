// `sorvane info`: tells what is in files.
#include "infocommand.h"

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <CLI/CLI.hpp>

#include "filecaches.h"
#include "fileinfo.h"
#include "filesearch.h"
#include "filetracker.h"
#include "infotext.h"
#include "inputtexts.h"
#include "progressbar.h"
#include "unitoption.h"

namespace sorvane {
namespace {
constexpr int kLayoutVersion = 1;

struct InfoOptions {
    std::vector<std::string> paths;
    bool isJson = false;
    InfoChoices choices;
};

// The files of the command line, and those that the viewer reads below its directories.
std::vector<std::string> filesOf(const std::vector<std::string>& paths, Streams& streams, bool& isComplete) {
    std::vector<std::string> files;
    for (const std::string& path : paths) {
        std::error_code ignored;
        if (!std::filesystem::is_directory(path, ignored)) {
            files.push_back(path); // whatever it is, there is something to be said about it
            continue;
        }
        const FoundFiles found = findFiles({path}, "sorvane info", streams.err);
        for (const FoundFile& file : found.files)
            files.push_back(file.path);
        isComplete = isComplete && found.isComplete;
    }
    return files;
}

ExitStatus runInfo(const InfoOptions& options, Streams& streams) {
    bool isComplete = true;
    const std::vector<std::string> paths = filesOf(options.paths, streams, isComplete);
    ExitStatus status = isComplete ? ExitStatus::Success : ExitStatus::ProblemsFound;
    if (paths.empty() && isComplete) {
        streams.err << "sorvane info: there is no file that the viewer reads\n";
        status = ExitStatus::ProblemsFound;
    }
    InfoRecord all{{"layout", kLayoutVersion}, {"files", InfoRecord::array()}};
    bool isFirst = true;
    ProgressBar progress(streams, static_cast<std::int64_t>(paths.size()), "files");
    std::int64_t done = 0;
    for (const std::string& path : paths) {
        progress.show(done++);
        InfoRecord record = describeFile(path, options.choices);
        forgetFile(path); // many files take no more memory than one
        ::cache.clear();
        if (record.contains("error")) {
            status = ExitStatus::ProblemsFound;
            progress.clear();
            streams.err << "sorvane info: " << inputName(path) << ": " << harmless(record["error"].get<std::string>())
                        << std::endl;
        }
        if (options.isJson) {
            all["files"].push_back(std::move(record));
            continue;
        }
        progress.clear();
        if (!isFirst)
            streams.out << '\n';
        isFirst = false;
        writeInfoText(record, streams.out);
    }
    // Names need not be UTF-8, JSON must.
    constexpr int kIndentation = 2;
    if (options.isJson)
        streams.out << all.dump(kIndentation, ' ', false, InfoRecord::error_handler_t::replace) << '\n';
    return status;
}
} // namespace

SubCommand addInfoCommand(CLI::App& parent) {
    const auto options = std::make_shared<InfoOptions>();
    CLI::App* const parser = parent.add_subcommand(
        "info", "Tell what is in files: trajectories, models, rasters, terrain sets and their tables.");
    parser
        ->add_option(
            "FILE", options->paths,
            "Files of any kind that the viewer reads, and directories; - is a trajectory on standard input")
        ->required();
    parser->add_flag("--json", options->isJson, "Print one JSON object for all files");
    addUnitOption(*parser, options->choices.unit, "What the files' lengths are in, which the files don't say");
    parser
        ->add_option_function<std::string>(
            "--band",
            [options](const std::string& text) {
                options->choices.band = parseBand(text);
                if (!options->choices.band)
                    throw CLI::ValidationError("--band", "two wavelengths are wanted, such as 3-5");
            },
            "Give the mean reflectance of spectra from A to B, in their unit of wavelength, as a terrain would take it")
        ->type_name("A-B");
    return {parser, [options](Streams& streams) {
                return runInfo(*options, streams);
            }};
}
} // namespace sorvane
