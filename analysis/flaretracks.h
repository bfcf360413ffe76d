// Follows each flare through the samples, by its identifier.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

#include "sampleseries.h"

namespace sorvane {
// Tracks are numbered from 0 in the order in which the flares appear. Rows are those of SampleSeries::flares(). Of two
// rows of one sample with the same identifier the last one counts, as it does for drawing.
class FlareTracks {
public:
    using Number = std::uint32_t; // of a row, a track or a sample
    static constexpr Number kNone = std::numeric_limits<Number>::max();

    explicit FlareTracks(const SampleSeries& series);

    std::size_t size() const { return ids_.size(); }
    int id(std::size_t track) const { return ids_[track]; }
    // By ascending time; where a sample is left out, the flare was out.
    std::span<const Number> rows(std::size_t track) const;

    std::size_t rowCount() const { return rows_.size(); }
    std::size_t trackOf(std::size_t row) const { return rows_[row].track; } // kNone of a row that doesn't count
    std::size_t sampleOf(std::size_t row) const { return rows_[row].sample; }
    // The sample with which the flare has been burning since; a flare that comes back begins anew.
    std::size_t litSince(std::size_t row) const { return rows_[row].litSince; }
    // The row of the same flare in the next sample; kNone when it is out there.
    std::size_t next(std::size_t row) const { return rows_[row].next; }
    // The row of the flare in a sample; kNone when it is out. O(log n).
    std::size_t rowAt(std::size_t track, std::size_t sample) const;
    // How many flares burn in a sample.
    std::size_t countAt(std::size_t sample) const { return counts_[sample]; }

private:
    struct Row {
        Number track = kNone;
        Number sample = 0;
        Number litSince = 0;
        Number next = kNone;
    };

    void number(const SampleSeries& series);
    void link(const SampleSeries& series);
    void sortByTrack();

    std::vector<int> ids_;
    std::vector<Row> rows_;
    std::vector<Number> counts_;  // by sample
    std::vector<Number> byTrack_; // rows
    std::vector<std::size_t> begins_;
};
} // namespace sorvane
