// Reads the plain decimal fields of a text line quickly, exactly as the scanf conversions would.
#pragma once

#include <bit>
#include <cstdint>
#include <string_view>
#include <system_error>

#include <fast_float/fast_float.h>

// A cursor over one line. Each reader answers true only for a field that is separated by blanks and spelt plainly, and
// gives then what "%d", "%f" or "%*s" give. Anything else (a plus sign, hexadecimal, nan, digits run into letters, more
// than nine digits of an integer, a missing field) answers false: the caller then reads the line again with sscanf.
class PlainFields {
public:
    explicit PlainFields(std::string_view line) : at_(line.data()), end_(at_ + line.size()) {}

    bool readInt(int& value) {
        skipBlanks();
        const bool isNegative = at_ != end_ && *at_ == '-';
        const char* digit = at_ + (isNegative ? 1 : 0);
        const char* const first = digit;
        int magnitude = 0;
        while (digit != end_ && isDigit(*digit) && digit - first < kMaximumIntDigits)
            magnitude = magnitude * 10 + (*digit++ - '0');
        if (digit == first || !isFieldEnd(digit))
            return false;
        value = isNegative ? -magnitude : magnitude;
        at_ = digit;
        return true;
    }

    bool readFloat(float& value) {
        skipBlanks();
        const char* const start = at_;
        const bool isNegative = at_ != end_ && *at_ == '-';
        const char* digit = at_ + (isNegative ? 1 : 0);
        const char* const first = digit;
        std::uint64_t digits = 0;
        while (digit != end_ && isDigit(*digit))
            digits = digits * 10 + static_cast<std::uint64_t>(*digit++ - '0');
        std::size_t decimals = 0;
        std::size_t points = 0;
        if (digit != end_ && *digit == '.') {
            const char* const fraction = ++digit;
            while (digit != end_ && isDigit(*digit))
                digits = digits * 10 + static_cast<std::uint64_t>(*digit++ - '0');
            decimals = static_cast<std::size_t>(digit - fraction);
            points = 1;
        }
        const std::size_t count = static_cast<std::size_t>(digit - first) - points;
        if (count - 1 < kMaximumExactDigits && isFieldEnd(digit)) {
            // Up to 15 digits and a power of ten are exact in double, so that their quotient is rounded once. Rounding
            // it again to float is harmless unless it lies half-way between two floats.
            const double quotient = static_cast<double>(digits) / kPowersOfTen[decimals];
            if ((std::bit_cast<std::uint64_t>(quotient) & kBelowFloat) != kHalfWay) {
                value = static_cast<float>(isNegative ? -quotient : quotient);
                at_ = digit;
                return true;
            }
        }
        return readAnyFloat(start, first, value);
    }

    bool skipWord() {
        skipBlanks();
        const char* const first = at_;
        while (at_ != end_ && !isBlank(*at_))
            ++at_;
        return at_ != first;
    }

private:
    static constexpr int kMaximumIntDigits = 9; // the largest that can't overflow

    static constexpr std::size_t kMaximumExactDigits = 15;
    static constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    static constexpr std::uint64_t kBelowFloat = 0x1FFFFFFF; // the bits that a double has and a float hasn't
    static constexpr std::uint64_t kHalfWay = 0x10000000;

    // fast_float takes neither a plus sign nor, as the first character tells, anything that isn't decimal.
    bool readAnyFloat(const char* start, const char* first, float& value) {
        if (first == end_ || !(isDigit(*first) || *first == '.'))
            return false;
        const auto [next, error] = fast_float::from_chars(start, end_, value);
        if (error != std::errc() || !isFieldEnd(next))
            return false;
        at_ = next;
        return true;
    }

    static bool isDigit(char c) { return c >= '0' && c <= '9'; }
    static bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
    bool isFieldEnd(const char* position) const { return position == end_ || isBlank(*position); }
    void skipBlanks() {
        while (at_ != end_ && isBlank(*at_))
            ++at_;
    }

    const char* at_;
    const char* end_;
};
