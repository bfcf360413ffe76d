// Counts values by equal steps.
#include "histogram.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
namespace {
constexpr double kMostSteps = 500.0;
constexpr double kMostWholeNumbers = 40.0; // from the least to the greatest
constexpr double kNoise = 1.0e-9;          // of a step

std::vector<double> finiteOf(std::span<const double> values) {
    std::vector<double> finite;
    finite.reserve(values.size());
    std::ranges::copy_if(values, std::back_inserter(finite), [](double value) { return std::isfinite(value); });
    return finite;
}

double quantile(std::vector<double>& values, double part) {
    const auto place = values.begin() + static_cast<std::ptrdiff_t>(part * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

// The least of 1, 2 and 5 times a power of ten that is no less.
double roundUp(double width) {
    const double power = std::pow(10.0, std::floor(std::log10(width)));
    for (const double digit : {1.0, 2.0, 5.0})
        if (digit * power >= width * (1.0 - kNoise))
            return digit * power;
    return 10.0 * power;
}

bool areCloseWholeNumbers(std::span<const double> finite, double least, double greatest) {
    return greatest - least <= kMostWholeNumbers &&
           std::ranges::all_of(finite, [](double value) { return value == std::floor(value); });
}

double widthOf(std::vector<double>& finite, double least, double greatest) {
    const auto count = static_cast<double>(finite.size());
    const double spread = quantile(finite, 0.75) - quantile(finite, 0.25);
    const double wanted = std::min(2.0 * spread / std::cbrt(count), (greatest - least) / (std::log2(count) + 1.0));
    // The spread of the least of doubles is no reason for steps that their sums can't tell apart.
    const double narrowest =
        std::max((greatest - least) / kMostSteps, std::max(std::abs(least), std::abs(greatest)) * kNoise);
    const double width = std::max(wanted, narrowest);
    return width > 0.0 ? roundUp(width) : 1.0;
}
} // namespace

std::size_t Histogram::stepOf(double value) const {
    const double step = std::floor((value - low) / width + kNoise);
    return static_cast<std::size_t>(std::clamp(step, 0.0, static_cast<double>(counts.size()) - 1.0));
}

Histogram histogramOf(std::span<const double> values) {
    std::vector<double> finite = finiteOf(values);
    Histogram histogram;
    if (finite.empty())
        return histogram;
    const auto [least, greatest] = std::ranges::minmax(finite);
    const bool areWhole = areCloseWholeNumbers(finite, least, greatest);
    histogram.width = areWhole ? 1.0 : widthOf(finite, least, greatest);
    const double offset = areWhole ? 0.5 : 0.0; // such a number is the middle of its step
    histogram.low = std::floor((least + offset) / histogram.width + kNoise) * histogram.width - offset;
    const double steps = std::floor((greatest - histogram.low) / histogram.width - kNoise) + 1.0;
    histogram.counts.resize(static_cast<std::size_t>(std::max(steps, 1.0)));
    for (const double value : finite)
        ++histogram.counts[histogram.stepOf(value)];
    return histogram;
}

std::pair<double, double> mostOf(std::span<const double> values) {
    constexpr double kLeftOut = 0.005; // at each end
    std::vector<double> finite = finiteOf(values);
    if (finite.empty())
        return {0.0, 1.0};
    std::ranges::sort(finite);
    const double least = finite.front();
    const double greatest = finite.back();
    const auto leftOut = static_cast<std::size_t>(kLeftOut * static_cast<double>(finite.size()));
    const double low = finite[leftOut];
    const double high = finite[finite.size() - 1 - leftOut];
    return high - low < 0.5 * (greatest - least) ? std::pair(low, high) : std::pair(least, greatest);
}

std::vector<std::size_t>
countMarked(const Histogram& steps, std::span<const double> values, std::span<const std::uint8_t> marks) {
    std::vector<std::size_t> counts(steps.counts.size());
    for (std::size_t i = 0; i < std::min(values.size(), marks.size()); ++i)
        if (marks[i] != 0 && std::isfinite(values[i]) && !counts.empty())
            ++counts[steps.stepOf(values[i])];
    return counts;
}
} // namespace sorvane
