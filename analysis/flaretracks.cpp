// Follows each flare through the samples, by its identifier.
#include "flaretracks.h"

#include <algorithm>
#include <unordered_map>

namespace sorvane {
FlareTracks::FlareTracks(const SampleSeries& series)
    : rows_(series.flares().size()), counts_(series.samples().size(), 0) {
    number(series);
    link(series);
    sortByTrack();
}

std::span<const FlareTracks::Number> FlareTracks::rows(std::size_t track) const {
    return std::span(byTrack_).subspan(begins_[track], begins_[track + 1] - begins_[track]);
}

std::size_t FlareTracks::rowAt(std::size_t track, std::size_t sample) const {
    const std::span<const Number> own = rows(track);
    const auto found = std::ranges::lower_bound(own, sample, {}, [&](Number row) { return rows_[row].sample; });
    return found != own.end() && rows_[*found].sample == sample ? *found : kNone;
}

// Most flares stand where they stood in the sample before: those are not looked up.
void FlareTracks::number(const SampleSeries& series) {
    std::unordered_map<int, Number> known;
    std::size_t previous = 0; // begin of the rows of the sample before
    std::size_t previousEnd = 0;
    for (std::size_t sample = 0; sample < series.samples().size(); ++sample) {
        const auto [begin, end] = series.flareRows(sample);
        for (std::size_t row = begin; row < end; ++row) {
            const int id = series.flares().ids[row];
            const std::size_t samePlace = previous + (row - begin);
            rows_[row].sample = static_cast<Number>(sample);
            if (samePlace < previousEnd && ids_[rows_[samePlace].track] == id) {
                rows_[row].track = rows_[samePlace].track;
                continue;
            }
            const auto [entry, isNew] = known.try_emplace(id, static_cast<Number>(ids_.size()));
            if (isNew)
                ids_.push_back(id);
            rows_[row].track = entry->second;
        }
        previous = begin;
        previousEnd = end;
    }
}

void FlareTracks::link(const SampleSeries& series) {
    std::vector<Number> last(ids_.size(), kNone); // row of each track so far
    std::vector<Number> current(ids_.size(), kNone);
    for (std::size_t sample = 0; sample < series.samples().size(); ++sample) {
        const auto [begin, end] = series.flareRows(sample);
        for (std::size_t row = begin; row < end; ++row)
            current[rows_[row].track] = static_cast<Number>(row);
        for (std::size_t row = begin; row < end; ++row) {
            Row& own = rows_[row];
            if (current[own.track] != row) {
                own.track = kNone;
                continue;
            }
            const Number before = last[own.track];
            const bool hasBurnt = before != kNone && rows_[before].sample + 1 == sample;
            own.litSince = hasBurnt ? rows_[before].litSince : own.sample;
            if (hasBurnt)
                rows_[before].next = static_cast<Number>(row);
            last[own.track] = static_cast<Number>(row);
            ++counts_[sample];
        }
    }
}

void FlareTracks::sortByTrack() {
    begins_.assign(ids_.size() + 1, 0);
    for (const Row& row : rows_)
        if (row.track != kNone)
            ++begins_[row.track + 1];
    for (std::size_t track = 0; track < ids_.size(); ++track)
        begins_[track + 1] += begins_[track];
    byTrack_.resize(begins_.back());
    std::vector<std::size_t> places(begins_.begin(), begins_.end() - 1);
    for (std::size_t row = 0; row < rows_.size(); ++row)
        if (rows_[row].track != kNone)
            byTrack_[places[rows_[row].track]++] = static_cast<Number>(row);
}
} // namespace sorvane
