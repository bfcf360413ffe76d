// `sorvane info`: tells what is in files.
#include "infocommand.h"

#include <memory>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "fileinfo.h"
#include "infotext.h"

namespace {
constexpr int kLayoutVersion = 1;

struct InfoOptions {
    std::vector<std::string> paths;
    bool isJson = false;
    std::string unit;
};

LengthUnit unitOf(const std::string& symbol) {
    if (symbol == "ft")
        return LengthUnit::Feet;
    return symbol == "m" ? LengthUnit::Metres : LengthUnit::Unstated;
}

ExitStatus runInfo(const InfoOptions& options, Streams& streams) {
    ExitStatus status = ExitStatus::Success;
    InfoRecord all{{"layout", kLayoutVersion}, {"files", InfoRecord::array()}};
    bool isFirst = true;
    for (const std::string& path : options.paths) {
        InfoRecord record = describeFile(path, unitOf(options.unit));
        if (record.contains("error")) {
            status = ExitStatus::ProblemsFound;
            streams.err << "sorvane info: " << path << ": " << record["error"].get<std::string>() << std::endl;
        }
        if (options.isJson) {
            all["files"].push_back(std::move(record));
            continue;
        }
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
    parser->add_option("--unit", options->unit, "What the files' lengths are in, which the files don't say")
        ->check(CLI::IsMember({"ft", "m"}))
        ->type_name("UNIT");
    return {parser, [options](Streams& streams) {
                return runInfo(*options, streams);
            }};
}
