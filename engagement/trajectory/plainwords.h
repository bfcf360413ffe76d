// A cursor over the words of a line of plain ASCII text that parses numbers straight from the bytes.
#pragma once

#include <string_view>

#include "plainnumber.h"
#include "wordconversion.h"

namespace sorvane {
// Gives what BasicTextWords gives over the same line, bit for bit. The line must hold neither NUL nor bytes above 0x7F:
// such bytes can move the ends of words. Words that are not plainly spelt numbers go through the conversion.
template <Conversion<std::string_view> Converter> class BasicPlainWords {
public:
    explicit BasicPlainWords(std::string_view line, Converter conversion = {})
        : conversion_(conversion), at_(line.data()), end_(line.data() + line.size()) {
        skipBlanks();
    }

    bool atEnd() const { return at_ == end_; }

    void skip() { takeWord(); }

    int nextInt() {
        const sorvane::PlainInt number = sorvane::scanInt(at_, end_);
        if (number.end == nullptr) [[unlikely]]
            return conversion_.toInt(takeWord()).value_or(0);
        moveTo(number.end);
        return number.value;
    }

    double nextDouble() {
        const PlainNumber number = parseNumber(at_, end_);
        if (number.end == nullptr) [[unlikely]]
            return conversion_.toDouble(takeWord()).value_or(0.0);
        moveTo(number.end);
        return number.value;
    }

    double nextReal() {
        const PlainNumber number = parseNumber(at_, end_);
        if (number.end == nullptr || !fitsSinglePrecision(number.value)) [[unlikely]]
            return conversion_.toReal(takeWord()).value_or(0.0);
        moveTo(number.end);
        return number.value;
    }

private:
    void skipBlanks() {
        while (at_ != end_ && sorvane::isPlainBlank(*at_))
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
        while (!sorvane::isPlainWordEnd(wordEnd, end_))
            ++wordEnd;
        moveTo(wordEnd);
        return {word, static_cast<std::size_t>(wordEnd - word)};
    }

    [[no_unique_address]] Converter conversion_;
    const char* at_;
    const char* end_;
};

using PlainWords = BasicPlainWords<SilentConversion>;
} // namespace sorvane
