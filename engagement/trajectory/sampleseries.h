// The samples of a trajectory by time, in double precision.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

#include "sample.h"

namespace sorvane {
// Puts samples, or whatever has their times, in order. Of those of one time the last one is kept.
template <class Sampled> void orderByTime(std::vector<Sampled>& samples) {
    if (std::ranges::adjacent_find(samples, std::ranges::greater_equal(), &Sampled::time) == samples.end())
        return;
    std::ranges::stable_sort(samples, {}, &Sampled::time);
    // From the back, so that the last one of each time stays.
    const auto isOfOneTime = [](const Sampled& a, const Sampled& b) {
        return a.time == b.time;
    };
    samples.erase(samples.begin(), std::unique(samples.rbegin(), samples.rend(), isOfOneTime).base());
}

// The flares of all samples side by side, a row for each flare of each sample: what measures need of them.
struct FlareColumns {
    std::vector<int> ids;
    std::vector<Triple> positions;
    std::vector<double> brightnesses;
    std::vector<Triple> bands; // which the viewer draws as half axes; all three are the first one below three bands

    std::size_t size() const { return ids.size(); }
    void add(const Flare& flare);
    void addRow(const FlareColumns& other, std::size_t row);
    // Gives back the memory that more rows would have taken.
    void shrink();
};

// The samples that the viewer has, with their flares.
class SampleSeries {
public:
    SampleSeries() = default;
    // Of what flares(), samples() and flareRows() of another one give, in order already; `flareEnds` are the second
    // numbers of flareRows().
    SampleSeries(std::vector<Sample> samples, std::vector<std::size_t> flareEnds, FlareColumns flares)
        : samples_(std::move(samples)), flareEnds_(std::move(flareEnds)), flares_(std::move(flares)) {}

    // Takes the samples in the order of the file.
    void add(const Sample& sample, std::span<const Flare> flares);
    // To be called after the last one. Takes no more memory then than it needs.
    void putInOrder();

    bool isEmpty() const { return samples_.empty(); }
    std::span<const Sample> samples() const { return samples_; } // by ascending time

    // By sample, and within it in the order of the file.
    const FlareColumns& flares() const { return flares_; }
    // A sample's flares are the rows from the first number to before the second one.
    std::pair<std::size_t, std::size_t> flareRows(std::size_t sample) const {
        return {sample == 0 ? 0 : flareEnds_[sample - 1], flareEnds_[sample]};
    }
    std::span<const int> flareIds(std::size_t sample) const;

private:
    std::vector<Sample> samples_;
    std::vector<std::size_t> flareEnds_; // of each sample, one past its rows; those of the next one follow
    FlareColumns flares_;
};
} // namespace sorvane
