// Gives engagements their radiometry, for the sub-commands and for Python.
#include "radiometer.h"

#include <algorithm>

#include "loaderguard.h"

namespace sorvane {
namespace {
constexpr const char* kConsequence = "what is measured of the target's radiation stays empty: ";

Outcome<std::shared_ptr<const TargetModel>> load(const std::vector<TargetFiles>& files) {
    std::shared_ptr<const TargetModel> model;
    const LoaderOutcome outcome = runLoader([&] { model = loadTargetModel(files); });
    if (outcome.hasReturned() && model != nullptr)
        return model;
    return Problem(
        kConsequence + (outcome.messages.empty() ? "its files can't be read" : outcome.messages.back().text));
}
} // namespace

std::optional<BandChoice> neededBands(std::span<const Measure* const> measures) {
    if (std::ranges::any_of(measures, [](const Measure* measure) { return measure->need == MeasureNeed::Bands; }))
        return BandChoice::All;
    if (std::ranges::any_of(measures, [](const Measure* measure) { return measure->needsRadiometry(); }))
        return BandChoice::Named;
    return std::nullopt;
}

Radiometer::Model Radiometer::modelOf(const std::vector<TargetFiles>& files) {
    std::vector<std::string> paths;
    for (const TargetFiles& band : files)
        for (const std::string& path :
             {band.body.reflectance, band.body.geometry, band.body.radiance, band.body.rotors, band.atmosphere})
            paths.push_back(path);
    const std::lock_guard alone(mutex_);
    const auto known = models_.find(paths);
    return known != models_.end() ? known->second : models_.emplace(paths, load(files)).first->second;
}

std::optional<Problem> Radiometer::measure(const TrajectoryFileHeader& header, MeasuredEngagement& engagement) {
    const std::vector<TargetFiles> files = targetFilesOf(header, bands_, options_.rotors);
    if (files.empty())
        return Problem(std::string(kConsequence) + "a file of it that the trajectory names does not exist");
    const Model model = modelOf(files);
    if (!model)
        return model.problem();
    engagement.setRadiometry(radiometryOf(
        engagement.samples(), **model,
        {.step = options_.step, .background = options_.background, .flareScale = options_.flareScale}));
    return std::nullopt;
}
} // namespace sorvane
