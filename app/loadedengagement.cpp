// A trajectory file as the viewer has loaded it: its engagement, and what is known of the file.
#include "loadedengagement.h"

#include <utility>

#include "etxyz.h"

namespace sorvane {
EngagementReading readEngagement(const QString& path) {
    EngagementReading reading{.stamp = fileStamp(path), .data = std::make_unique<etxyz>(), .modelFiles = {}};
    reading.data->LoadETXYZ(path);
    if (std::as_const(reading.data->keyframes).isEmpty())
        reading.data.reset();
    else
        reading.modelFiles = modelFilesOf(*reading.data);
    return reading;
}

LoadedEngagement::LoadedEngagement(QString path, EngagementReading reading)
    : path_(std::move(path)), reading_(std::move(reading)) {}

LoadedEngagement::~LoadedEngagement() = default;

const EngagementFacts& LoadedEngagement::facts() const {
    if (!facts_)
        facts_ = factsOf(reading_.data->samples);
    return *facts_;
}

std::unique_ptr<etxyz> LoadedEngagement::take(EngagementReading reading) {
    facts_.reset();
    return std::exchange(reading_, std::move(reading)).data;
}
} // namespace sorvane
