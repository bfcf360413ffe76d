// Gives engagements their radiometry, for the sub-commands and for Python.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "measure.h"
#include "problem.h"
#include "radiometry.h"

namespace sorvane {
struct TrajectoryFileHeader;

// What a user may choose.
struct RadiometryOptions {
    double step = RadiometryWork::kUsualStep; // seconds
    std::optional<double> background{};       // W/cm²/sr; that of the sky without it
    double flareScale = 1.0;                  // W/sr of a flare of brightness 1
    std::string rotors{};                     // path; empty without any
};

// What the measures need of the target's signature; nothing where none needs any.
std::optional<BandChoice> neededBands(std::span<const Measure* const> measures);

// The files of a target are read once, whatever the number of engagements. May be asked from several threads at once,
// as long as nobody else reads bodies.
class Radiometer {
public:
    Radiometer(const RadiometryOptions& options, BandChoice bands) : options_(options), bands_(bands) {}

    // Works the engagement's radiometry out. The problem when the target's files, or those of a band, can't be used:
    // what is measured of its radiation, or of that in the band, then stays undefined.
    std::optional<Problem> measure(const TrajectoryFileHeader& header, MeasuredEngagement& engagement);

private:
    struct Model {
        std::shared_ptr<const TargetModel> target{};
        std::string lack{}; // what stays undefined, and why
    };
    static Outcome<Model> load(const std::vector<TargetFiles>& files);
    const Outcome<Model>& modelOf(const std::vector<TargetFiles>& files);

    RadiometryOptions options_;
    BandChoice bands_;
    std::mutex mutex_;
    std::map<std::vector<std::string>, Outcome<Model>> models_; // by the paths; they stay where they are
};
} // namespace sorvane
