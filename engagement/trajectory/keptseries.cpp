// The samples that an engagement keeps for measures: packed while nobody measures it.
#include "keptseries.h"

namespace sorvane {
void KeptSeries::pack() {
    if (plain_ == nullptr)
        return;
    packed_ = PackedSeries(*plain_);
    unpacked_ = plain_;
    plain_.reset();
}

std::shared_ptr<const SampleSeries> KeptSeries::series() const {
    if (plain_ != nullptr)
        return plain_;
    std::shared_ptr<const SampleSeries> series = unpacked_.lock();
    if (series == nullptr) {
        series = std::make_shared<SampleSeries>(packed_.unpacked());
        unpacked_ = series;
    }
    return series;
}
} // namespace sorvane
