// `sorvane info`: tells what is in files.
#include "infocommand.h"

#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "fileinfo.h"
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
    LengthUnit unit = LengthUnit::Unstated;
};

ExitStatus runInfo(const InfoOptions& options, Streams& streams) {
    ExitStatus status = ExitStatus::Success;
    InfoRecord all{{"layout", kLayoutVersion}, {"files", InfoRecord::array()}};
    bool isFirst = true;
    ProgressBar progress(streams, static_cast<std::int64_t>(options.paths.size()), "files");
    std::int64_t done = 0;
    for (const std::string& path : options.paths) {
        progress.show(done++);
        InfoRecord record = describeFile(path, options.unit);
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
            "FILE", options->paths, "Files of any kind that the viewer reads; - is a trajectory on standard input")
        ->required();
    parser->add_flag("--json", options->isJson, "Print one JSON object for all files");
    addUnitOption(*parser, options->unit, "What the files' lengths are in, which the files don't say");
    return {parser, [options](Streams& streams) {
                return runInfo(*options, streams);
            }};
}
} // namespace sorvane
