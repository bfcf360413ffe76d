// Numbers as the shortest text that reads back exactly, the same whatever the locale.
#pragma once

#include <array>
#include <charconv>
#include <cmath>
#include <string>

namespace sorvane {
// A float's text is the shortest for a float.
template <class Number> void appendShortest(std::string& text, Number value) {
    std::array<char, 32> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value);
    if (error == std::errc())
        text.append(digits.data(), end);
}

template <class Number> std::string shortestText(Number value) {
    std::string text;
    appendShortest(text, value);
    return text;
}

// The double that is written with as few digits as the float: 6.6, not 6.599999904632568.
inline double shortestDouble(float value) {
    const std::string digits = shortestText(value);
    double number = double{value}; // stays when it is not finite
    if (std::isfinite(value))
        std::from_chars(digits.data(), digits.data() + digits.size(), number);
    return number;
}
} // namespace sorvane
