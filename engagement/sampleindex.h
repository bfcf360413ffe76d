// Finds the samples around a time.
#pragma once

#include <utility>
#include <vector>

#include <QMap>

#include "keyframe.h"

namespace sorvane {
// Searching a map of many samples misses the processor's caches at almost every step, and a map doesn't count. So the
// times are kept side by side, each with its place in the map.
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
    struct Entry {
        double time = 0.0;
        Place place;
    };

    void update(const Samples& samples);
    const Entry* firstAfter(double t) const;

    // Shares the data of the map that is indexed: its places stay valid, and a map that was changed or replaced since
    // can be told by no longer sharing them.
    Samples indexed_;
    std::vector<Entry> entries_;
};
} // namespace sorvane
