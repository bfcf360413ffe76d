// Parses numbers straight from the bytes of plain ASCII text, exactly as QString converts them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

// A finite number and where it ends; `end` is null when there is none.
struct PlainNumber {
    const char* end;
    double value;
};

inline bool isPlainBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline bool isPlainWordEnd(const char* at, const char* end) {
    return at == end || isPlainBlank(*at);
}

// The number that makes up the whole word at `begin`. Finds those that begin with a digit (after a minus); any other
// word may yet be a number for QString.
PlainNumber parseUncommonNumber(const char* begin, const char* end);

// The same, quick for those of few digits without an exponent.
inline PlainNumber parseNumber(const char* begin, const char* end) {
    // Digits and power of ten are then exact in double, so that dividing them rounds once, as it should.
    constexpr std::ptrdiff_t kExactDigits = 15;
    static constexpr double kPowersOfTen[kExactDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                              1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const bool isNegative = begin != end && *begin == '-';
    const char* const digits = isNegative ? begin + 1 : begin;
    const char* at = digits;
    std::uint64_t decimal = 0;
    const auto takeDigits = [&] {
        for (; at != end && *at >= '0' && *at <= '9'; ++at)
            decimal = 10 * decimal + static_cast<std::uint64_t>(*at - '0');
    };
    takeDigits();
    if (at == digits)
        return {nullptr, 0.0};
    std::ptrdiff_t digitCount = at - digits;
    std::ptrdiff_t decimals = 0;
    if (at != end && *at == '.') {
        const char* const fraction = ++at;
        takeDigits();
        decimals = at - fraction;
        digitCount += decimals;
    }
    if (digitCount > kExactDigits || !isPlainWordEnd(at, end)) [[unlikely]]
        return parseUncommonNumber(begin, end);
    const double value = static_cast<double>(decimal) / kPowersOfTen[decimals];
    return {at, isNegative ? -value : value};
}

// QString's conversions of a word; 0 for a malformed one.
int convertedInt(std::string_view word);
float convertedFloat(std::string_view word);
double convertedDouble(std::string_view word);
