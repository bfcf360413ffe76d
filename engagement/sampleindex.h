// Finds the samples around a time.
#pragma once

#include <utility>
#include <vector>

#include <QMap>

#include "keyframe.h"

namespace sorvane {
// Searching a map of many samples misses the processor's caches at almost every step, and a map doesn't count. So times
// are kept side by side, of one sample in a few, each with its place in the map.
class SampleIndex {
public:
    using Samples = QMap<double, keyframe>;
    using Place = Samples::const_iterator;

    // The last sample not after t and the first one after t. Before the first sample both are the first one, from the
    // last one on both are the last one; for NaN the first one. There must be a sample.
    std::pair<Place, Place> around(const Samples& samples, double t);

    // How many samples are not after t; none for NaN.
    std::size_t countNotAfter(const Samples& samples, double t);

    // Lets go of the map, for a caller that is about to change it: it is shared while there is an index of it, and so
    // would be copied.
    void clear();

private:
    static constexpr std::size_t kStep = 4;
    struct Entry {
        double time = 0.0;
        Place place;
    };

    // The last sample not after t, and its number from 0.
    struct Found {
        Place place;
        std::size_t number = 0;
    };

    void update(const Samples& samples);
    Found lastNotAfter(double t) const;
    const Entry* firstAfter(double t) const;

    // Shares the data of the map that is indexed: its places stay valid, and a map that was changed or replaced since
    // can be told by no longer sharing them.
    Samples indexed_;
    std::vector<Entry> entries_; // of every kStep-th sample and of the last one
};
} // namespace sorvane
