// A sample of a spectral library in ASTER format.
#include "spectrum.h"

#include <cmath>
#include <iterator>
#include <numbers>
#include <string_view>

#include "numbertext.h"

namespace sorvane {
namespace {
constexpr int kFirst = 40; // in steps of a twentieth of a micrometre
constexpr int kLast = 280;
constexpr double kStep = 0.05;

// Around 1; its ripple has whole waves from 3 to 5, so that the mean there is 1.
double shape(double wavelength) {
    const double ripple = 0.2 * std::sin(2.0 * std::numbers::pi * (wavelength - 3.0));
    return wavelength <= 5.0 ? 1.0 + ripple : 1.0 + ripple * std::exp(5.0 - wavelength);
}
} // namespace

std::string spectrumText(const GroundCover& cover) {
    const std::string_view labels[] = {
        "Type",        "Class",         "Subclass",      "Particle size",      "Sample number",
        "Owner",       "Origin",        "Collected",     "Description",        "Geology",
        "Measurement", "First column",  "Second column", "Wavelength range",   "Units of x",
        "Units of y",  "First x value", "Last x value",  "Number of x values", "Additional information"};
    const bool isFalling = cover.ground == GroundClass::Soil || cover.ground == GroundClass::Rock;
    std::string text = std::string("Name: ") + cover.name + '\n';
    for (const std::string_view label : labels)
        text.append(label).append(": demonstration\n");
    for (auto line = std::size(labels) + 1; line < 26; ++line)
        text += '\n';
    for (int step = 0; step <= kLast - kFirst; ++step) {
        const double wavelength = kStep * (isFalling ? kLast - step : kFirst + step);
        appendFixed(text, wavelength, 4);
        text += ' ';
        appendFixed(text, cover.percentReflectance * shape(wavelength), 4);
        text += '\n';
    }
    return text;
}
} // namespace sorvane
