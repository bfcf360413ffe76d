// Packs a column of numbers into few bits and gives it back to the bit.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "bitstream.h"

namespace sorvane {
// Numbers of less than 2^51 either way. What is written of them are their differences, or the differences of these,
// whichever take less; small ones take few bits.
void packIntegers(std::span<const std::int64_t> values, BitWriter& writer);
void unpackIntegers(BitReader& reader, std::span<std::int64_t> values);

// A trajectory's text gives its numbers in decimal digits, and those of one column have about as many. So they become
// integers: thousandths, say. A number for which that isn't exact is kept as it is, and so is a column of such numbers.
class ColumnPacker {
public:
    explicit ColumnPacker(BitWriter& writer) : writer_(writer) {}

    void pack(std::span<const double> values);

private:
    struct Exception {
        std::size_t place;
        double value;
    };

    bool isLast(std::span<const double> values) const;
    // With as few digits as do. False for a column that is to be kept as it is.
    bool makeUnits(std::span<const double> values);
    // The same with so many digits. False, too, when a value wants more, which `digits` then are, and the greatest one,
    // `most`, allows them.
    bool makeUnits(std::span<const double> values, unsigned& digits, double most);

    BitWriter& writer_;
    std::vector<double> last_; // the column before, which may be the same
    unsigned digits_ = 0;
    std::vector<std::int64_t> units_;
    std::vector<Exception> exceptions_;
};

// In the order in which they were packed.
class ColumnUnpacker {
public:
    explicit ColumnUnpacker(BitReader& reader) : reader_(reader) {}

    // Valid until the next call. `count` is that of the values that were packed.
    std::span<const double> unpack(std::size_t count);

private:
    BitReader& reader_;
    std::vector<double> values_;
    std::vector<std::int64_t> units_;
};
} // namespace sorvane
