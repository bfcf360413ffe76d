// A cursor over the words of a line of plain ASCII text that parses numbers straight from the bytes.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include <fast_float/fast_float.h>

#include <QString>

#include "wordconversion.h"

// Gives what TextWords gives over the same line, bit for bit. The line must hold neither NUL nor bytes above 0x7F: such
// bytes can move the ends of words. What it can't be sure to read alike it hands to the conversion that TextWords uses.
class PlainWords {
public:
    explicit PlainWords(std::string_view line) : at_(line.data()), end_(line.data() + line.size()) { skipBlanks(); }

    bool atEnd() const { return at_ == end_; }

    void skip() {
        while (at_ != end_ && !isBlank(*at_))
            ++at_;
        skipBlanks();
    }

    int nextInt() {
        const char* p = at_;
        const bool negative = p != end_ && *p == '-';
        if (negative)
            ++p;
        const char* const digits = p;
        int value = 0;
        while (p != end_ && isDigit(*p) && p - digits < kSafeIntDigits)
            value = 10 * value + (*p++ - '0');
        if (p == digits || !isWordEnd(p))
            return toInt(unusualWord()).value_or(0);
        moveTo(p);
        return negative ? -value : value;
    }

    double nextDouble() {
        double value = 0.0;
        const char* const wordEnd = parseNumber(value);
        if (wordEnd == nullptr)
            return toDouble(unusualWord()).value_or(0.0);
        moveTo(wordEnd);
        return value;
    }

    // By way of double, as QString's conversion does: its result differs from the directly rounded one now and then.
    float nextFloat() {
        double value = 0.0;
        const char* const wordEnd = parseNumber(value);
        if (wordEnd == nullptr || std::abs(value) > std::numeric_limits<float>::max())
            return toFloat(unusualWord()).value_or(0.0F);
        const auto narrowed = static_cast<float>(value);
        if (narrowed == 0.0F && value != 0.0)
            return toFloat(unusualWord()).value_or(0.0F);
        moveTo(wordEnd);
        return narrowed;
    }

private:
    static constexpr int kSafeIntDigits = 9; // can't overflow

    static bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
    static bool isDigit(char c) { return c >= '0' && c <= '9'; }
    bool isWordEnd(const char* p) const { return p == end_ || isBlank(*p); }

    void skipBlanks() {
        while (at_ != end_ && isBlank(*at_))
            ++at_;
    }

    void moveTo(const char* wordEnd) {
        at_ = wordEnd;
        skipBlanks();
    }

    // The end of the word at the cursor when it is a finite number that begins with a digit (after a minus), else null.
    const char* parseNumber(double& value) const {
        const char* const start = at_;
        const bool negative = start != end_ && *start == '-';
        const char* const digits = negative ? start + 1 : start;
        const char* p = digits;
        std::uint64_t decimal = 0;
        while (p != end_ && isDigit(*p))
            decimal = 10 * decimal + static_cast<std::uint64_t>(*p++ - '0');
        if (p == digits)
            return nullptr;
        std::ptrdiff_t digitCount = p - digits;
        std::ptrdiff_t decimals = 0;
        if (p != end_ && *p == '.') {
            const char* const fraction = ++p;
            while (p != end_ && isDigit(*p))
                decimal = 10 * decimal + static_cast<std::uint64_t>(*p++ - '0');
            decimals = p - fraction;
            digitCount += decimals;
        }
        if (digitCount > kExactDigits || !isWordEnd(p))
            return parseUncommonNumber(value);
        // Digits and power of ten are exact in double, so this rounds once, as it should.
        value = static_cast<double>(decimal) / kPowersOfTen[decimals];
        if (negative)
            value = -value;
        return p;
    }
    static constexpr std::ptrdiff_t kExactDigits = 15;
    static constexpr double kPowersOfTen[kExactDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                              1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

    const char* parseUncommonNumber(double& value) const {
        const fast_float::from_chars_result parsed = fast_float::from_chars(at_, end_, value);
        if (parsed.ec != std::errc() || !isWordEnd(parsed.ptr) || !std::isfinite(value))
            return nullptr;
        // A number too small for a double comes out as zero too, but is malformed.
        const std::string_view word(at_, static_cast<std::size_t>(parsed.ptr - at_));
        if (value == 0.0 && word.find_first_not_of("-0.") != std::string_view::npos)
            return nullptr;
        return parsed.ptr;
    }

    // Takes the word at the cursor, which may be missing.
    QString unusualWord() {
        const char* const start = at_;
        while (at_ != end_ && !isBlank(*at_))
            ++at_;
        QString word = QString::fromLatin1(start, at_ - start);
        skipBlanks();
        return word;
    }

    const char* at_;
    const char* end_;
};
