// Reads the plain decimal fields of a text line quickly, exactly as the scanf conversions would.
#pragma once

#include <string_view>
#include <system_error>

#include <fast_float/fast_float.h>

#include "plaindecimal.h"

namespace sorvane {
// A cursor over one line. Each reader answers true only for a field that is separated by blanks and spelt plainly, and
// gives then what "%d", "%f" or "%*s" give. Anything else (a plus sign, hexadecimal, nan, digits run into letters, more
// than nine digits of an integer, a missing field) answers false: the caller then reads the line again with sscanf.
class PlainFields {
public:
    explicit PlainFields(std::string_view line) : at_(line.data()), end_(at_ + line.size()) {}

    bool readInt(int& value) {
        skipBlanks();
        const sorvane::PlainInt number = sorvane::scanInt(at_, end_);
        if (number.end == nullptr)
            return false;
        value = number.value;
        at_ = number.end;
        return true;
    }

    bool readFloat(float& value) {
        skipBlanks();
        const sorvane::PlainDecimal decimal = sorvane::scanDecimal(at_, end_);
        if (decimal.isExact() && isFieldEnd(decimal.end)) {
            const double exact = decimal.value();
            if (!sorvane::isHalfWayBetweenFloats(exact)) {
                value = static_cast<float>(exact);
                at_ = decimal.end;
                return true;
            }
        }
        return readAnyFloat(value);
    }

    bool skipWord() {
        skipBlanks();
        const char* const first = at_;
        while (at_ != end_ && !sorvane::isPlainBlank(*at_))
            ++at_;
        return at_ != first;
    }

private:
    // fast_float takes neither a plus sign nor, as the first character tells, anything that isn't decimal.
    bool readAnyFloat(float& value) {
        const char* const first = at_ + (at_ != end_ && *at_ == '-' ? 1 : 0);
        if (first == end_ || !(isDigit(*first) || *first == '.'))
            return false;
        const auto [next, error] = fast_float::from_chars(at_, end_, value);
        if (error != std::errc() || !isFieldEnd(next))
            return false;
        at_ = next;
        return true;
    }

    static bool isDigit(char c) { return c >= '0' && c <= '9'; }
    bool isFieldEnd(const char* position) const { return sorvane::isPlainWordEnd(position, end_); }
    void skipBlanks() {
        while (at_ != end_ && sorvane::isPlainBlank(*at_))
            ++at_;
    }

    const char* at_;
    const char* end_;
};
} // namespace sorvane
