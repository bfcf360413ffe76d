// Gives engagements their radiometry, for the sub-commands and for Python.
#include "radiometer.h"

#include <algorithm>

#include "loaderguard.h"

namespace sorvane {
namespace {
constexpr const char* kConsequence = "what is measured of the target's radiation stays empty: ";

// The bands whose files can't be used.
std::string leftOut(const std::vector<TargetFiles>& files, const TargetModel& model) {
    std::string digits;
    for (const TargetFiles& file : files)
        if (std::ranges::find(model.bands, file.band, &TargetModel::Band::digit) == model.bands.end())
            digits += (digits.empty() ? "" : ", ") + std::string(1, file.band);
    return digits;
}
} // namespace

Outcome<Radiometer::Model> Radiometer::load(const std::vector<TargetFiles>& files) {
    Model loaded;
    const LoaderOutcome outcome = runLoader([&] { loaded.target = loadTargetModel(files); });
    const std::string reason = outcome.messages.empty() ? "its files can't be read" : outcome.messages.back().text;
    if (!outcome.hasReturned() || loaded.target == nullptr)
        return Problem(kConsequence + reason);
    if (const std::string bands = leftOut(files, *loaded.target); !bands.empty())
        loaded.lack = "what is measured in band " + bands + " stays empty: " + reason;
    return loaded;
}

std::optional<BandChoice> neededBands(std::span<const Measure* const> measures) {
    if (std::ranges::any_of(measures, [](const Measure* measure) { return measure->need == MeasureNeed::Bands; }))
        return BandChoice::All;
    if (std::ranges::any_of(measures, [](const Measure* measure) { return measure->needsRadiometry(); }))
        return BandChoice::Named;
    return std::nullopt;
}

const Outcome<Radiometer::Model>& Radiometer::modelOf(const std::vector<TargetFiles>& files) {
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
    const Outcome<Model>& model = modelOf(files);
    if (!model)
        return model.problem();
    engagement.setRadiometry(radiometryOf(
        engagement.samples(), *model->target,
        {.step = options_.step, .background = options_.background, .flareScale = options_.flareScale}));
    if (!model->lack.empty())
        return Problem(model->lack);
    return std::nullopt;
}
} // namespace sorvane
