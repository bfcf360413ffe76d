// Parses numbers straight from the bytes of plain ASCII text, exactly as QString converts them.
#include "plainnumber.h"

#include <cmath>
#include <string_view>

#include <fast_float/fast_float.h>

namespace sorvane {
PlainNumber parseUncommonNumber(const char* begin, const char* end) {
    double value = 0.0;
    const fast_float::from_chars_result parsed = fast_float::from_chars(begin, end, value);
    if (parsed.ec != std::errc() || !sorvane::isPlainWordEnd(parsed.ptr, end) || !std::isfinite(value))
        return {nullptr, 0.0};
    // A number too small for a double comes out as zero too, but is malformed.
    const std::string_view word(begin, static_cast<std::size_t>(parsed.ptr - begin));
    if (value == 0.0 && word.find_first_not_of("-0.") != std::string_view::npos)
        return {nullptr, 0.0};
    return {parsed.ptr, value};
}
} // namespace sorvane
