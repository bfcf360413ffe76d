// The options of measures of radiation, and what gives an engagement its radiometry for the sub-commands.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "measure.h"
#include "problem.h"
#include "radiometry.h"

namespace CLI {
class App;
}

namespace sorvane {
struct TrajectoryFileHeader;

struct RadiometryOptions {
    double step = RadiometryWork::kUsualStep; // seconds
    std::optional<double> background;         // W/cm²/sr; that of the sky without it
    double flareScale = 1.0;                  // W/sr of a flare of brightness 1
    std::string rotors;                       // path; empty without any

    bool operator==(const RadiometryOptions&) const = default;
};

// Adds --signature-step, --background, --flare-scale and --rotors. `options` must outlive the parser.
void addRadiometryOptions(CLI::App& parser, RadiometryOptions& options);
// Appends those that were given.
void spellOut(const RadiometryOptions& options, std::vector<std::string>& words);

// What the measures need of the target's signature; nothing where none needs any.
std::optional<BandChoice> neededBands(std::span<const Measure* const> measures);

// Works out radiometry; the files of a target are read once, whatever the number of engagements. May be asked from
// several threads at once.
class Radiometer {
public:
    Radiometer(const RadiometryOptions& options, BandChoice bands);

    // The problem when the target's files can't be used: the engagement's measures of radiation then stay empty.
    std::optional<Problem> measure(const TrajectoryFileHeader& header, MeasuredEngagement& engagement);

private:
    RadiometryOptions options_;
    BandChoice bands_;
    TargetModels models_;
};
} // namespace sorvane
