// Hand-made samples of a spectral library for tests.
#pragma once

#include <string>

// A sample with 26 header lines, of which one is long, before the points.
inline std::string asterText(const std::string& points) {
    std::string text = "Name: " + std::string(300, 'n') + "\n";
    for (int i = 2; i <= 26; ++i)
        text += "Header line " + std::to_string(i) + ": 1.0 2.0\n";
    return text + points;
}

// Mean 0.4 over 8 to 9.
inline const std::string kRisingPoints = "7 10\n8.0 20.0\n 8.5\t40\r\n9 60\n10 80\n";
inline const std::string kFallingPoints = "10 80\n9 60\n8.5 40\n8 20\n7 10\n";
