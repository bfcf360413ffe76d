// The options of measures of radiation, and what gives an engagement its radiometry for the sub-commands.
#include "radiometryoptions.h"

#include <algorithm>

#include <CLI/CLI.hpp>

#include "loaderguard.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
constexpr double kShortestStep = 0.001;
constexpr double kLongestStep = 3600.0;
constexpr double kLargest = 1e30;

std::shared_ptr<const TargetModel> loadQuietly(const std::vector<TargetFiles>& files) {
    std::shared_ptr<const TargetModel> model;
    const LoaderOutcome outcome = runLoader([&] { model = loadTargetModel(files); });
    return outcome.hasReturned() ? model : nullptr;
}
} // namespace

void addRadiometryOptions(CLI::App& parser, RadiometryOptions& options) {
    parser
        .add_option(
            "--signature-step", options.step,
            "Seconds between the times at which the target's radiation is worked out, for measures that need it")
        ->type_name("SECONDS")
        ->capture_default_str()
        ->check(CLI::Range(kShortestStep, kLongestStep));
    parser
        .add_option(
            "--background", options.background,
            "Radiance behind the target in W/cm2/sr, for target-contrast; without it that of the sky")
        ->type_name("RADIANCE")
        ->check(CLI::Range(0.0, kLargest));
    parser
        .add_option(
            "--flare-scale", options.flareScale, "Intensity in W/sr of a flare of brightness 1, for ratios to the target")
        ->type_name("INTENSITY")
        ->capture_default_str()
        ->check(CLI::Range(1.0 / kLargest, kLargest));
    parser.add_option("--rotors", options.rotors, "Rotor file of the target, whose rotors turn with time")
        ->type_name("FILE")
        ->check(CLI::ExistingFile);
}

void spellOut(const RadiometryOptions& options, std::vector<std::string>& words) {
    const RadiometryOptions usual;
    if (options.step != usual.step)
        words.insert(words.end(), {"--signature-step", shortestText(options.step)});
    if (options.background)
        words.insert(words.end(), {"--background", shortestText(*options.background)});
    if (options.flareScale != usual.flareScale)
        words.insert(words.end(), {"--flare-scale", shortestText(options.flareScale)});
    if (!options.rotors.empty())
        words.insert(words.end(), {"--rotors", options.rotors});
}

std::optional<BandChoice> neededBands(std::span<const Measure* const> measures) {
    if (std::ranges::any_of(measures, [](const Measure* measure) { return measure->need == MeasureNeed::Bands; }))
        return BandChoice::All;
    if (std::ranges::any_of(measures, [](const Measure* measure) { return measure->needsRadiometry(); }))
        return BandChoice::Named;
    return std::nullopt;
}

Radiometer::Radiometer(const RadiometryOptions& options, BandChoice bands)
    : options_(options), bands_(bands), models_(loadQuietly) {}

std::optional<Problem> Radiometer::measure(const TrajectoryFileHeader& header, MeasuredEngagement& engagement) {
    const std::vector<TargetFiles> files = targetFilesOf(header, bands_, options_.rotors);
    if (files.empty())
        return "a file of the target that the trajectory names does not exist: what is measured of its radiation stays "
               "empty";
    const std::shared_ptr<const TargetModel> model = models_.of(files);
    if (model == nullptr)
        return files.front().body.geometry +
               ": the files of the target can't be used: what is measured of its radiation stays empty";
    engagement.setRadiometry(radiometryOf(
        engagement.samples(), *model,
        {.step = options_.step, .background = options_.background, .flareScale = options_.flareScale}));
    return std::nullopt;
}
} // namespace sorvane
