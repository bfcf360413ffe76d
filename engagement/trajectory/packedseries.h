// The samples of a trajectory in little memory, for as long as nobody measures them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sampleseries.h"

namespace sorvane {
// Column by column, flares' columns by identifier, in which they change little from row to row. Nothing is lost.
class PackedSeries {
public:
    PackedSeries() = default;
    // Of a series in order.
    explicit PackedSeries(const SampleSeries& series);

    bool isEmpty() const { return sampleCount_ == 0; }
    SampleSeries unpacked() const;
    std::size_t bytes() const { return words_.size() * sizeof(std::uint64_t); }

private:
    std::size_t sampleCount_ = 0;
    std::size_t rowCount_ = 0;
    std::vector<std::uint64_t> words_;
};
} // namespace sorvane
