// The samples of a trajectory by time, in double precision.
#include "sampleseries.h"

namespace sorvane {
void FlareColumns::add(const Flare& flare) {
    ids.push_back(flare.id);
    positions.push_back(flare.position);
    brightnesses.push_back(flare.brightness);
    bands.push_back(flare.halfAxes);
}

void FlareColumns::addRow(const FlareColumns& other, std::size_t row) {
    ids.push_back(other.ids[row]);
    positions.push_back(other.positions[row]);
    brightnesses.push_back(other.brightnesses[row]);
    bands.push_back(other.bands[row]);
}

void SampleSeries::add(const Sample& sample, std::span<const Flare> flares) {
    const std::size_t begin = flares_.size();
    for (const Flare& flare : flares)
        flares_.add(flare);
    samples_.push_back(sample);
    ranges_.push_back({sample.time, begin, flares_.size()});
}

void SampleSeries::putInOrder() {
    if (std::ranges::adjacent_find(samples_, std::ranges::greater_equal(), &Sample::time) == samples_.end())
        return;
    orderByTime(samples_);
    orderByTime(ranges_);
    FlareColumns ordered;
    for (FlareRange& range : ranges_) {
        const std::size_t begin = ordered.size();
        for (std::size_t row = range.begin; row < range.end; ++row)
            ordered.addRow(flares_, row);
        range = {range.time, begin, ordered.size()};
    }
    flares_ = std::move(ordered);
}

std::pair<std::size_t, std::size_t> SampleSeries::flareRows(std::size_t sample) const {
    return {ranges_[sample].begin, ranges_[sample].end};
}

std::span<const int> SampleSeries::flareIds(std::size_t sample) const {
    const auto [begin, end] = flareRows(sample);
    return std::span(flares_.ids).subspan(begin, end - begin);
}
} // namespace sorvane
