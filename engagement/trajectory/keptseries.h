// The samples that an engagement keeps for measures: packed while nobody measures it.
#pragma once

#include <memory>
#include <utility>

#include "packedseries.h"
#include "sampleseries.h"

namespace sorvane {
// Is to be asked on one thread at a time; what it gives may go to others.
class KeptSeries {
public:
    KeptSeries() = default;
    // Of a series in order.
    explicit KeptSeries(SampleSeries series) : plain_(std::make_shared<SampleSeries>(std::move(series))) {}

    // Gives most of its memory back, once nobody holds the series any more.
    void pack();

    bool isEmpty() const { return plain_ == nullptr ? packed_.isEmpty() : plain_->isEmpty(); }
    // Never null. A packed one is unpacked unless somebody holds it still, so hold it for as long as you go by it,
    // rather than ask again each frame.
    std::shared_ptr<const SampleSeries> series() const;

private:
    std::shared_ptr<const SampleSeries> plain_; // null once it is packed
    PackedSeries packed_;
    mutable std::weak_ptr<const SampleSeries> unpacked_;
};
} // namespace sorvane
