// A target as its radiation is worked out of it.
#include "targetmodel.h"

namespace sorvane {
std::shared_ptr<const TargetModel> loadTargetModel(const std::vector<TargetFiles>& files) {
    auto model = std::make_shared<TargetModel>();
    for (const TargetFiles& ofBand : files) {
        TargetModel::Band band{ofBand.band};
        if (band.body.load(ofBand.body) && band.atmosphere.Load(ofBand.atmosphere))
            model->bands.push_back(std::move(band));
        else if (model->bands.empty())
            return nullptr;
    }
    return model->bands.empty() ? nullptr : model;
}

std::shared_ptr<const TargetModel> TargetModels::of(const std::vector<TargetFiles>& files) {
    if (files.empty())
        return nullptr;
    std::vector<std::string> paths;
    for (const TargetFiles& band : files)
        paths.insert(
            paths.end(),
            {band.body.reflectance, band.body.geometry, band.body.radiance, band.body.rotors, band.atmosphere});
    const std::lock_guard alone(mutex_);
    const auto known = models_.find(paths);
    return known != models_.end() ? known->second : models_[paths] = load_(files);
}
} // namespace sorvane
