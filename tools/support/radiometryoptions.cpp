// The options of measures of radiation.
#include "radiometryoptions.h"

#include <CLI/CLI.hpp>

#include "finiterange.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
constexpr double kShortestStep = 0.001;
constexpr double kLongestStep = 3600.0;
constexpr double kLargest = 1e30;
} // namespace

void addRadiometryOptions(CLI::App& parser, RadiometryOptions& options) {
    parser
        .add_option(
            "--signature-step", options.step,
            "Seconds between the times at which the target's radiation is worked out, for measures that need it")
        ->type_name("SECONDS")
        ->capture_default_str()
        ->check(finiteRange(kShortestStep, kLongestStep));
    parser
        .add_option(
            "--background", options.background,
            "Radiance behind the target in W/cm2/sr, for target-contrast; without it that of the sky")
        ->type_name("RADIANCE")
        ->check(finiteRange(0.0, kLargest));
    parser
        .add_option(
            "--flare-scale", options.flareScale,
            "Intensity in W/sr of a flare of brightness 1, for ratios to the target")
        ->type_name("INTENSITY")
        ->capture_default_str()
        ->check(finiteRange(1.0 / kLargest, kLargest));
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
} // namespace sorvane
