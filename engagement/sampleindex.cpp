// Finds the samples around a time.
#include "sampleindex.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace sorvane {
std::pair<SampleIndex::Place, SampleIndex::Place> SampleIndex::around(const Samples& samples, double t) {
    const Place first = samples.cbegin();
    const Place last = std::prev(samples.cend());
    if (std::isnan(t) || t < first.key())
        return {first, first};
    if (t >= last.key())
        return {last, last};
    update(samples);
    const Place lower = lastNotAfter(t).place;
    return {lower, std::next(lower)};
}

std::size_t SampleIndex::countNotAfter(const Samples& samples, double t) {
    if (samples.isEmpty() || std::isnan(t) || t < samples.firstKey())
        return 0;
    if (t >= samples.lastKey())
        return static_cast<std::size_t>(samples.size());
    update(samples);
    return lastNotAfter(t).number + 1;
}

void SampleIndex::clear() {
    indexed_.clear();
    entries_.clear();
}

void SampleIndex::update(const Samples& samples) {
    if (indexed_.isSharedWith(samples))
        return;
    indexed_ = samples;
    entries_.clear();
    const auto count = static_cast<std::size_t>(samples.size());
    entries_.reserve(count / kStep + 2);
    std::size_t number = 0;
    for (Place place = indexed_.cbegin(); place != indexed_.cend(); ++place, ++number)
        if (number % kStep == 0 || number + 1 == count)
            entries_.push_back({place.key(), place});
}

// For a t from the first time up to, not including, the last one.
SampleIndex::Found SampleIndex::lastNotAfter(double t) const {
    const Entry* const entry = std::prev(firstAfter(t));
    Found found{entry->place, kStep * static_cast<std::size_t>(entry - entries_.data())};
    for (Place next = std::next(found.place); next.key() <= t; ++next) {
        found.place = next;
        ++found.number;
    }
    return found;
}

// For such a t, too. Samples mostly come in even steps, so the search starts where t would then be and widens in
// doubling strides: few steps then, and never more than a logarithm of them.
const SampleIndex::Entry* SampleIndex::firstAfter(double t) const {
    const Entry* const first = entries_.data();
    const std::ptrdiff_t count = std::ssize(entries_);
    const double fraction = (t - first->time) / (entries_.back().time - first->time);
    const std::ptrdiff_t guess =
        fraction > 0.0 ? std::min(static_cast<std::ptrdiff_t>(fraction * static_cast<double>(count - 1)), count - 1)
                       : 0;
    // Narrowed down so that the entry before `low` is not after t and the one at `high` is.
    std::ptrdiff_t low = 1;
    std::ptrdiff_t high = count - 1;
    std::ptrdiff_t stride = 1;
    if (first[guess].time <= t) {
        low = guess + 1;
        while (low + stride < high && first[low + stride].time <= t) {
            low += stride + 1;
            stride *= 2;
        }
        high = std::min(low + stride, high);
    } else {
        high = guess;
        while (high - stride >= low && first[high - stride].time > t) {
            high -= stride;
            stride *= 2;
        }
        low = std::max(high - stride + 1, low);
    }
    return std::upper_bound(
        first + low, first + high, t, [](double time, const Entry& entry) { return time < entry.time; });
}
} // namespace sorvane
