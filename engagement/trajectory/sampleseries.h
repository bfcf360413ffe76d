// The samples of a trajectory by time, in double precision.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <span>
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

// The samples that the viewer has, with the identifiers of their flares.
class SampleSeries {
public:
    // Takes the samples in the order of the file.
    void add(const Sample& sample, std::span<const Flare> flares);
    // To be called after the last one.
    void putInOrder();

    bool isEmpty() const { return samples_.empty(); }
    std::span<const Sample> samples() const { return samples_; } // by ascending time
    std::span<const int> flareIds(std::size_t sample) const;

private:
    struct FlareRange {
        double time = 0.0; // of its sample
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    std::vector<Sample> samples_;
    std::vector<FlareRange> flares_; // of each sample
    std::vector<int> flareIds_;
};
} // namespace sorvane
