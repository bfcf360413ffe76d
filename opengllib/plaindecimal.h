// Scans plainly spelt numbers, for the readers of the library and of trajectories.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

namespace sorvane {
// White space as the C locale has it.
inline bool isPlainBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline bool isPlainWordEnd(const char* at, const char* end) {
    return at == end || isPlainBlank(*at);
}

// A word of an optional minus and at most nine digits, which can't overflow.
struct PlainInt {
    const char* end = nullptr; // null when the word is anything else
    int value = 0;
};

inline PlainInt scanInt(const char* begin, const char* end) {
    constexpr std::ptrdiff_t kMaximumDigits = 9;
    const bool isNegative = begin != end && *begin == '-';
    const char* const digits = begin + (isNegative ? 1 : 0);
    const char* at = digits;
    int value = 0;
    for (; at != end && *at >= '0' && *at <= '9' && at - digits < kMaximumDigits; ++at)
        value = 10 * value + (*at - '0');
    if (at == digits || !isPlainWordEnd(at, end))
        return {};
    return {at, isNegative ? -value : value};
}

// What stands at the beginning of a text: a minus or none, digits or none, a point and digits or none.
struct PlainDecimal {
    const char* end = nullptr;
    std::uint64_t digits = 0; // of both parts, as one number; what overflows is lost
    std::ptrdiff_t integerDigits = 0;
    std::ptrdiff_t decimals = 0;
    bool isNegative = false;

    // Whether there are digits, and few enough that value() is the double nearest to what is written: digits and power
    // of ten are then exact in double, so that dividing them rounds once.
    bool isExact() const { return static_cast<std::size_t>(integerDigits + decimals - 1) < kExactDigits; }
    double value() const {
        const double magnitude = static_cast<double>(digits) / kPowersOfTen[decimals];
        return isNegative ? -magnitude : magnitude;
    }

private:
    static constexpr std::size_t kExactDigits = 15;
    static constexpr double kPowersOfTen[kExactDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                              1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
};

inline PlainDecimal scanDecimal(const char* begin, const char* end) {
    PlainDecimal decimal;
    decimal.isNegative = begin != end && *begin == '-';
    const char* at = begin + (decimal.isNegative ? 1 : 0);
    const auto takeDigits = [&] {
        const char* const first = at;
        for (; at != end && *at >= '0' && *at <= '9'; ++at)
            decimal.digits = 10 * decimal.digits + static_cast<std::uint64_t>(*at - '0');
        return at - first;
    };
    decimal.integerDigits = takeDigits();
    if (at != end && *at == '.') {
        ++at;
        decimal.decimals = takeDigits();
    }
    decimal.end = at;
    return decimal;
}

// A double that came from rounding gives, rounded once more, the float nearest to the number that it came from, unless
// it lies half-way between two floats.
inline bool isHalfWayBetweenFloats(double value) {
    constexpr std::uint64_t kBelowFloat = 0x1FFFFFFF; // the bits that a double has and a float hasn't
    constexpr std::uint64_t kHalfWay = 0x10000000;
    return (std::bit_cast<std::uint64_t>(value) & kBelowFloat) == kHalfWay;
}
} // namespace sorvane
