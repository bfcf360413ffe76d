// The samples of a trajectory in little memory, for as long as nobody measures them.
#include "packedseries.h"

#include <array>
#include <unordered_map>
#include <utility>

#include "packedcolumn.h"

namespace sorvane {
namespace {
constexpr std::array kTriples = {
    &Sample::targetPosition, &Sample::targetAttitude, &Sample::threatPosition, &Sample::threatAttitude, &Sample::gyro};
constexpr std::size_t kAxes = 3;

// The numbers of the rows, those of one identifier behind each other.
std::vector<std::size_t> rowsById(const std::vector<int>& ids) {
    std::unordered_map<int, std::size_t> numbers;
    std::vector<std::size_t> numberOfRow;
    std::vector<std::size_t> places; // in the result, of the next row of each
    numberOfRow.reserve(ids.size());
    for (const int id : ids) {
        const std::size_t number = numbers.try_emplace(id, numbers.size()).first->second;
        if (number == places.size())
            places.push_back(0);
        ++places[number];
        numberOfRow.push_back(number);
    }
    std::size_t begin = 0;
    for (std::size_t& place : places)
        begin += std::exchange(place, begin);
    std::vector<std::size_t> rows(ids.size());
    for (std::size_t row = 0; row < ids.size(); ++row)
        rows[places[numberOfRow[row]]++] = row;
    return rows;
}

// Packs what `valueOf` gives for the numbers below `count`.
class Packer {
public:
    explicit Packer(BitWriter& writer) : writer_(writer), columns_(writer) {}

    template <class ValueOf> void column(std::size_t count, ValueOf valueOf) {
        values_.resize(count);
        for (std::size_t i = 0; i < count; ++i)
            values_[i] = valueOf(i);
        columns_.pack(values_);
    }
    template <class ValueOf> void integers(std::size_t count, ValueOf valueOf) {
        integers_.resize(count);
        for (std::size_t i = 0; i < count; ++i)
            integers_[i] = static_cast<std::int64_t>(valueOf(i));
        packIntegers(integers_, writer_);
    }

private:
    BitWriter& writer_;
    ColumnPacker columns_;
    std::vector<double> values_;
    std::vector<std::int64_t> integers_;
};

// Gives the numbers back to `take`, each with its own.
class Unpacker {
public:
    explicit Unpacker(const std::vector<std::uint64_t>& words) : reader_(words), columns_(reader_) {}

    template <class Take> void column(std::size_t count, Take take) {
        const std::span<const double> values = columns_.unpack(count);
        for (std::size_t i = 0; i < count; ++i)
            take(i, values[i]);
    }
    template <class Take> void integers(std::size_t count, Take take) {
        integers_.resize(count);
        unpackIntegers(reader_, integers_);
        for (std::size_t i = 0; i < count; ++i)
            take(i, integers_[i]);
    }

private:
    BitReader reader_;
    ColumnUnpacker columns_;
    std::vector<std::int64_t> integers_;
};
} // namespace

PackedSeries::PackedSeries(const SampleSeries& series)
    : sampleCount_(series.samples().size()), rowCount_(series.flares().size()) {
    const std::span<const Sample> samples = series.samples();
    const FlareColumns& flares = series.flares();
    BitWriter writer;
    Packer packer(writer);
    packer.column(sampleCount_, [&](std::size_t i) { return samples[i].time; });
    packer.integers(sampleCount_, [&](std::size_t i) { return samples[i].flareCount; });
    packer.integers(sampleCount_, [&](std::size_t i) { return series.flareRows(i).second; });
    for (const auto triple : kTriples)
        for (std::size_t axis = 0; axis < kAxes; ++axis)
            packer.column(sampleCount_, [&](std::size_t i) { return (samples[i].*triple)[axis]; });
    packer.integers(rowCount_, [&](std::size_t row) { return flares.ids[row]; });
    const std::vector<std::size_t> rows = rowsById(flares.ids);
    for (std::size_t axis = 0; axis < kAxes; ++axis)
        packer.column(rowCount_, [&](std::size_t i) { return flares.positions[rows[i]][axis]; });
    packer.column(rowCount_, [&](std::size_t i) { return flares.brightnesses[rows[i]]; });
    for (std::size_t band = 0; band < kAxes; ++band)
        packer.column(rowCount_, [&](std::size_t i) { return flares.bands[rows[i]][band]; });
    words_ = writer.take();
}

SampleSeries PackedSeries::unpacked() const {
    if (isEmpty())
        return {};
    std::vector<Sample> samples(sampleCount_);
    std::vector<std::size_t> flareEnds(sampleCount_);
    FlareColumns flares;
    flares.ids.resize(rowCount_);
    flares.positions.resize(rowCount_);
    flares.brightnesses.resize(rowCount_);
    flares.bands.resize(rowCount_);
    Unpacker unpacker(words_);
    unpacker.column(sampleCount_, [&](std::size_t i, double time) { samples[i].time = time; });
    unpacker.integers(
        sampleCount_, [&](std::size_t i, std::int64_t count) { samples[i].flareCount = static_cast<int>(count); });
    unpacker.integers(
        sampleCount_, [&](std::size_t i, std::int64_t end) { flareEnds[i] = static_cast<std::size_t>(end); });
    for (const auto triple : kTriples)
        for (std::size_t axis = 0; axis < kAxes; ++axis)
            unpacker.column(sampleCount_, [&](std::size_t i, double value) { (samples[i].*triple)[axis] = value; });
    unpacker.integers(rowCount_, [&](std::size_t row, std::int64_t id) { flares.ids[row] = static_cast<int>(id); });
    const std::vector<std::size_t> rows = rowsById(flares.ids);
    for (std::size_t axis = 0; axis < kAxes; ++axis)
        unpacker.column(rowCount_, [&](std::size_t i, double value) { flares.positions[rows[i]][axis] = value; });
    unpacker.column(rowCount_, [&](std::size_t i, double value) { flares.brightnesses[rows[i]] = value; });
    for (std::size_t band = 0; band < kAxes; ++band)
        unpacker.column(rowCount_, [&](std::size_t i, double value) { flares.bands[rows[i]][band] = value; });
    return {std::move(samples), std::move(flareEnds), std::move(flares)};
}
} // namespace sorvane
