// The samples of a trajectory by time, in double precision.
#include "sampleseries.h"

namespace sorvane {
void SampleSeries::add(const Sample& sample, std::span<const Flare> flares) {
    const std::size_t begin = flareIds_.size();
    for (const Flare& flare : flares)
        flareIds_.push_back(flare.id);
    samples_.push_back(sample);
    flares_.push_back({sample.time, begin, flareIds_.size()});
}

void SampleSeries::putInOrder() {
    orderByTime(samples_);
    orderByTime(flares_);
}

std::span<const int> SampleSeries::flareIds(std::size_t sample) const {
    const FlareRange& range = flares_[sample];
    return std::span(flareIds_).subspan(range.begin, range.end - range.begin);
}
} // namespace sorvane
