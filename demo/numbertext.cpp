// Numbers as text, the same whatever the locale.
#include "numbertext.h"

#include <array>
#include <charconv>

namespace sorvane {
void appendFixed(std::string& text, double value, int decimals) {
    std::array<char, 32> digits{};
    const auto [end, error] =
        std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed, decimals);
    if (error == std::errc())
        text.append(digits.data(), end);
}

void appendFixed(std::string& text, const Vec3d& values) {
    appendFixed(text, values.x);
    text += ' ';
    appendFixed(text, values.y);
    text += ' ';
    appendFixed(text, values.z);
}
} // namespace sorvane
