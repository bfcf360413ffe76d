// Packs a column of numbers into few bits and gives it back to the bit.
#include "packedcolumn.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <optional>

namespace sorvane {
namespace {
// Numbers that share a width: few, so that a jump widens few.
constexpr std::size_t kBlock = 16;
constexpr unsigned kWidthBits = 6;
constexpr unsigned kMostDifferences = 2;
constexpr unsigned kOrderBits = 2;

constexpr double kMostUnits = 0x1p51;
constexpr unsigned kDigitsBits = 5;
// A power of ten is a double up to the 22nd, so that a quotient by it is the double next to the decimal number.
constexpr std::array<double, 23> kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                            1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr std::size_t kPartOfExceptions = 16; // one in so many at most; each takes two words

enum class ColumnKind { Units, AsItIs, LikeTheLast };
constexpr unsigned kKindBits = 2;

std::uint64_t zigZag(std::uint64_t difference) {
    return difference << 1 ^ (difference >> 63 != 0 ? ~std::uint64_t{0} : 0);
}

std::uint64_t unZigZag(std::uint64_t code) {
    return code >> 1 ^ (0 - (code & 1));
}

// The differences of each order one by one, in arithmetic that wraps around.
class Differences {
public:
    std::array<std::uint64_t, kMostDifferences + 1> next(std::int64_t value) {
        const auto number = static_cast<std::uint64_t>(value);
        const std::uint64_t first = number - number_;
        const std::uint64_t second = first - first_;
        number_ = number;
        first_ = first;
        return {zigZag(number), zigZag(first), zigZag(second)};
    }

private:
    std::uint64_t number_ = 0;
    std::uint64_t first_ = 0;
};

unsigned widthOf(std::uint64_t all) {
    return static_cast<unsigned>(std::bit_width(all));
}

std::size_t cheapestOrder(std::span<const std::int64_t> values) {
    std::array<std::size_t, kMostDifferences + 1> bits{};
    Differences differences;
    for (std::size_t begin = 0; begin < values.size(); begin += kBlock) {
        std::array<std::uint64_t, kMostDifferences + 1> all{};
        const auto block = values.subspan(begin, std::min(kBlock, values.size() - begin));
        for (const std::int64_t value : block) {
            const auto codes = differences.next(value);
            for (std::size_t order = 0; order < all.size(); ++order)
                all[order] |= codes[order];
        }
        for (std::size_t order = 0; order < all.size(); ++order)
            bits[order] += widthOf(all[order]) * block.size();
    }
    return static_cast<std::size_t>(std::ranges::min_element(bits) - bits.begin());
}

// How many of 10^-digits the value is; nothing unless it is the double next to that number.
std::optional<std::int64_t> unitsOf(double value, unsigned digits) {
    // Rounds to the nearest integer; what that loses, the comparison tells.
    constexpr double kRounding = 0x1.8p52;
    const double units = value * kPowers[digits] + kRounding - kRounding;
    if (!(std::abs(units) < kMostUnits) ||
        std::bit_cast<std::uint64_t>(units / kPowers[digits]) != std::bit_cast<std::uint64_t>(value))
        return std::nullopt;
    return static_cast<std::int64_t>(units);
}

bool isSameToTheBit(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}
} // namespace

void packIntegers(std::span<const std::int64_t> values, BitWriter& writer) {
    const std::size_t order = cheapestOrder(values);
    writer.write(order, kOrderBits);
    Differences differences;
    std::array<std::uint64_t, kBlock> codes{};
    for (std::size_t begin = 0; begin < values.size(); begin += kBlock) {
        const auto block = values.subspan(begin, std::min(kBlock, values.size() - begin));
        std::uint64_t all = 0;
        for (std::size_t i = 0; i < block.size(); ++i)
            all |= codes[i] = differences.next(block[i])[order];
        const unsigned width = widthOf(all);
        writer.write(width, kWidthBits);
        for (std::size_t i = 0; i < block.size(); ++i)
            writer.write(codes[i], width);
    }
}

void unpackIntegers(BitReader& reader, std::span<std::int64_t> values) {
    const std::uint64_t order = reader.read(kOrderBits);
    std::uint64_t number = 0;
    std::uint64_t first = 0;
    for (std::size_t begin = 0; begin < values.size(); begin += kBlock) {
        const auto width = static_cast<unsigned>(reader.read(kWidthBits));
        for (std::int64_t& value : values.subspan(begin, std::min(kBlock, values.size() - begin))) {
            const std::uint64_t difference = unZigZag(reader.read(width));
            if (order == 2)
                first += difference;
            number = order == 0 ? difference : number + (order == 1 ? difference : first);
            value = static_cast<std::int64_t>(number);
        }
    }
}

void ColumnPacker::pack(std::span<const double> values) {
    const ColumnKind kind = isLast(values)      ? ColumnKind::LikeTheLast
                            : makeUnits(values) ? ColumnKind::Units
                                                : ColumnKind::AsItIs;
    writer_.write(static_cast<std::uint64_t>(kind), kKindBits);
    if (kind == ColumnKind::LikeTheLast)
        return;
    last_.assign(values.begin(), values.end());
    if (kind == ColumnKind::AsItIs) {
        for (const double value : values)
            writer_.write(std::bit_cast<std::uint64_t>(value), 64);
        return;
    }
    writer_.write(digits_, kDigitsBits);
    packIntegers(units_, writer_);
    writer_.write(exceptions_.size(), 64);
    for (const Exception& exception : exceptions_) {
        writer_.write(exception.place, 64);
        writer_.write(std::bit_cast<std::uint64_t>(exception.value), 64);
    }
}

bool ColumnPacker::isLast(std::span<const double> values) const {
    return std::ranges::equal(values, last_, isSameToTheBit);
}

bool ColumnPacker::makeUnits(std::span<const double> values) {
    // More digits than the largest number allows would leave all out for the sake of one.
    double most = 0.0;
    for (const double value : values)
        if (std::abs(value) < kMostUnits)
            most = std::max(most, std::abs(value));
    digits_ = 0;
    unsigned digits = 0;
    while (!makeUnits(values, digits, most)) {
        if (digits == digits_)
            return false;
        digits_ = digits;
    }
    return true;
}

// False when there are too many exceptions, or when `digits`, which then are more, would do for another value.
bool ColumnPacker::makeUnits(std::span<const double> values, unsigned& digits, double most) {
    units_.resize(values.size());
    exceptions_.clear();
    std::int64_t last = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (const std::optional<std::int64_t> units = unitsOf(values[i], digits_)) {
            units_[i] = last = *units;
            continue;
        }
        for (unsigned more = digits_ + 1; more < kPowers.size() && most * kPowers[more] < kMostUnits; ++more)
            if (unitsOf(values[i], more)) {
                digits = more;
                return false;
            }
        units_[i] = last;
        exceptions_.push_back({i, values[i]});
        if (exceptions_.size() > values.size() / kPartOfExceptions + 1)
            return false;
    }
    return true;
}

std::span<const double> ColumnUnpacker::unpack(std::size_t count) {
    const auto kind = static_cast<ColumnKind>(reader_.read(kKindBits));
    if (kind == ColumnKind::LikeTheLast)
        return values_;
    values_.resize(count);
    if (kind == ColumnKind::AsItIs) {
        for (double& value : values_)
            value = std::bit_cast<double>(reader_.read(64));
        return values_;
    }
    const double power = kPowers[reader_.read(kDigitsBits)];
    units_.resize(count);
    unpackIntegers(reader_, units_);
    for (std::size_t i = 0; i < count; ++i)
        values_[i] = static_cast<double>(units_[i]) / power;
    for (std::uint64_t exceptions = reader_.read(64); exceptions > 0; --exceptions) {
        const std::size_t place = reader_.read(64);
        values_[place] = std::bit_cast<double>(reader_.read(64));
    }
    return values_;
}
} // namespace sorvane
