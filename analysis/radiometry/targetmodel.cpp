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
} // namespace sorvane
