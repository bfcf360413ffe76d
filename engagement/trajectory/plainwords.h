// A cursor over the words of a line of plain ASCII text that parses numbers straight from the bytes.
#pragma once

#include <cmath>
#include <limits>
#include <string_view>

#include "plainnumber.h"

// Gives what TextWords gives over the same line, bit for bit. The line must hold neither NUL nor bytes above 0x7F: such
// bytes can move the ends of words. What it can't be sure to read alike it hands to the conversion that TextWords uses,
// by way of a `Conversion`; an empty word is a missing one.
template <class Conversion> class BasicPlainWords {
public:
    explicit BasicPlainWords(std::string_view line, Conversion conversion = {})
        : conversion_(conversion), at_(line.data()), end_(line.data() + line.size()) {
        skipBlanks();
    }

    bool atEnd() const { return at_ == end_; }

    void skip() { takeWord(); }

    int nextInt() {
        const char* at = at_;
        const bool isNegative = at != end_ && *at == '-';
        if (isNegative)
            ++at;
        const char* const digits = at;
        int value = 0;
        for (; at != end_ && *at >= '0' && *at <= '9' && at - digits < kSafeIntDigits; ++at)
            value = 10 * value + (*at - '0');
        if (at == digits || !isPlainWordEnd(at, end_)) [[unlikely]]
            return conversion_.toInt(takeWord());
        moveTo(at);
        return isNegative ? -value : value;
    }

    double nextDouble() {
        const PlainNumber number = parseNumber(at_, end_);
        if (number.end == nullptr) [[unlikely]]
            return conversion_.toDouble(takeWord());
        moveTo(number.end);
        return number.value;
    }

    // By way of double, as QString's conversion does: its result differs from the directly rounded one now and then.
    float nextFloat() {
        const PlainNumber number = parseNumber(at_, end_);
        if (number.end == nullptr || std::abs(number.value) > std::numeric_limits<float>::max()) [[unlikely]]
            return conversion_.toFloat(takeWord());
        const auto narrowed = static_cast<float>(number.value);
        if (narrowed == 0.0F && number.value != 0.0) [[unlikely]]
            return conversion_.toFloat(takeWord());
        moveTo(number.end);
        return narrowed;
    }

private:
    static constexpr int kSafeIntDigits = 9; // can't overflow

    void skipBlanks() {
        while (at_ != end_ && isPlainBlank(*at_))
            ++at_;
    }

    void moveTo(const char* wordEnd) {
        at_ = wordEnd;
        skipBlanks();
    }

    // The word at the cursor, empty when there is none.
    std::string_view takeWord() {
        const char* const word = at_;
        const char* wordEnd = word;
        while (!isPlainWordEnd(wordEnd, end_))
            ++wordEnd;
        moveTo(wordEnd);
        return {word, static_cast<std::size_t>(wordEnd - word)};
    }

    [[no_unique_address]] Conversion conversion_;
    const char* at_;
    const char* end_;
};

// A malformed or missing word is 0, and nobody hears of it.
struct SilentPlainConversion {
    static int toInt(std::string_view word) { return convertedInt(word); }
    static float toFloat(std::string_view word) { return convertedFloat(word); }
    static double toDouble(std::string_view word) { return convertedDouble(word); }
};

using PlainWords = BasicPlainWords<SilentPlainConversion>;
