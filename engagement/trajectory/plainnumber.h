// Parses numbers straight from the bytes of plain ASCII text, exactly as QString converts them.
#pragma once

#include "plaindecimal.h"

namespace sorvane {
// A finite number and where it ends; `end` is null when there is none.
struct PlainNumber {
    const char* end;
    double value;
};

// The number that makes up the whole word at `begin`. Finds those that begin with a digit (after a minus); any other
// word may yet be a number for QString.
PlainNumber parseUncommonNumber(const char* begin, const char* end);

// The same, quick for those of few digits without an exponent.
inline PlainNumber parseNumber(const char* begin, const char* end) {
    const sorvane::PlainDecimal decimal = sorvane::scanDecimal(begin, end);
    if (decimal.integerDigits == 0)
        return {nullptr, 0.0};
    if (!decimal.isExact() || !sorvane::isPlainWordEnd(decimal.end, end)) [[unlikely]]
        return parseUncommonNumber(begin, end);
    return {decimal.end, decimal.value()};
}
} // namespace sorvane
