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

void FlareColumns::shrink() {
    ids.shrink_to_fit();
    positions.shrink_to_fit();
    brightnesses.shrink_to_fit();
    bands.shrink_to_fit();
}

void SampleSeries::add(const Sample& sample, std::span<const Flare> flares) {
    for (const Flare& flare : flares)
        flares_.add(flare);
    samples_.push_back(sample);
    flareEnds_.push_back(flares_.size());
}

void SampleSeries::putInOrder() {
    if (std::ranges::adjacent_find(samples_, std::ranges::greater_equal(), &Sample::time) != samples_.end()) {
        struct Place {
            double time = 0.0;
            std::size_t sample = 0;
        };
        std::vector<Place> places;
        for (const Sample& sample : samples_)
            places.push_back({sample.time, places.size()});
        orderByTime(places);
        SampleSeries ordered;
        for (const Place& place : places) {
            const auto [begin, end] = flareRows(place.sample);
            for (std::size_t row = begin; row < end; ++row)
                ordered.flares_.addRow(flares_, row);
            ordered.samples_.push_back(samples_[place.sample]);
            ordered.flareEnds_.push_back(ordered.flares_.size());
        }
        *this = std::move(ordered);
    }
    samples_.shrink_to_fit();
    flareEnds_.shrink_to_fit();
    flares_.shrink();
}

std::span<const int> SampleSeries::flareIds(std::size_t sample) const {
    const auto [begin, end] = flareRows(sample);
    return std::span(flares_.ids).subspan(begin, end - begin);
}
} // namespace sorvane
