// Reads the plain decimal fields of a text line quickly, exactly as the scanf conversions would.
#pragma once

#include <charconv>
#include <string_view>

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
        const char* const first = at_ != end_ && *at_ == '-' ? at_ + 1 : at_;
        if (first == end_ || !(isDigit(*first) || *first == '.'))
            return false;
        const auto [next, error] = fast_float::from_chars(at_, end_, value);
        if (error != std::errc() || !isFieldEnd(next))
            return false;
        at_ = next;
        return true;
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
