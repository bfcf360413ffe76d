// Statistics of one sample: moments, quantiles, and the 95 % intervals of medians, shares and distributions.
#include "statistics.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <vector>

namespace sorvane {
namespace {
constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
constexpr double kNormalQuantile = 1.959963984540054; // at (1 + kConfidence) / 2
constexpr double kTail = (1.0 - kConfidence) / 2.0;

Interval percentiles(const std::function<double()>& draw) {
    std::vector<double> drawn(kBootstrapResamples);
    std::ranges::generate(drawn, draw);
    std::ranges::sort(drawn);
    return {quantileOf(drawn, kTail), quantileOf(drawn, 1.0 - kTail)};
}
} // namespace

double meanOf(std::span<const double> values) {
    return values.empty() ? kNone
                          : std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

double standardDeviationOf(std::span<const double> values) {
    if (values.size() < 2)
        return kNone;
    const double mean = meanOf(values);
    const double squares = std::transform_reduce(values.begin(), values.end(), 0.0, std::plus(), [mean](double value) {
        return (value - mean) * (value - mean);
    });
    return std::sqrt(squares / static_cast<double>(values.size() - 1));
}

double quantileOf(std::span<const double> ascending, double share) {
    if (ascending.empty())
        return kNone;
    const double place = share * static_cast<double>(ascending.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, ascending.size() - 1);
    const double low = ascending[below];
    return low + (place - static_cast<double>(below)) * (ascending[above] - low);
}

double Share::value() const {
    return of == 0 ? kNone : static_cast<double>(count) / static_cast<double>(of);
}

Interval wilsonInterval(const Share& share) {
    if (share.of == 0)
        return {kNone, kNone};
    const auto n = static_cast<double>(share.of);
    const double p = share.value();
    const double squared = kNormalQuantile * kNormalQuantile;
    const double middle = (p + squared / (2.0 * n)) / (1.0 + squared / n);
    const double half = kNormalQuantile / (1.0 + squared / n) * std::sqrt(p * (1.0 - p) / n + squared / (4.0 * n * n));
    // The ends are exact there, which rounding is not.
    return {share.count == 0 ? 0.0 : middle - half, share.count == share.of ? 1.0 : middle + half};
}

Interval newcombeInterval(const Share& a, const Share& b) {
    const double difference = a.value() - b.value();
    const Interval ofA = wilsonInterval(a);
    const Interval ofB = wilsonInterval(b);
    return {
        difference - std::hypot(a.value() - ofA.low, ofB.high - b.value()),
        difference + std::hypot(ofA.high - a.value(), b.value() - ofB.low)};
}

double MedianResampler::valueAt(double place) const {
    const auto number = static_cast<std::size_t>(place * static_cast<double>(values_.size()));
    return values_[std::min(number, values_.size() - 1)];
}

double MedianResampler::beta(double a, double b) {
    const double of = std::gamma_distribution<double>(a)(random_);
    return of / (of + std::gamma_distribution<double>(b)(random_));
}

double MedianResampler::next() {
    const std::size_t n = values_.size();
    const std::size_t middle = (n + 1) / 2; // counted from 1; the lower one of two
    const double place = beta(static_cast<double>(middle), static_cast<double>(n + 1 - middle));
    if (n % 2 == 1)
        return valueAt(place);
    // The upper one is the least of those that lie beyond.
    const double left = std::uniform_real_distribution<double>()(random_);
    const double upper = 1.0 - (1.0 - place) * std::pow(1.0 - left, 1.0 / static_cast<double>(n - middle));
    return (valueAt(place) + valueAt(upper)) / 2.0;
}

Interval medianInterval(std::span<const double> ascending) {
    if (ascending.size() < 2)
        return {kNone, kNone};
    MedianResampler resampler(ascending);
    return percentiles([&resampler] { return resampler.next(); });
}

Interval medianDifferenceInterval(std::span<const double> a, std::span<const double> b) {
    if (a.size() < 2 || b.size() < 2)
        return {kNone, kNone};
    MedianResampler ofA(a);
    MedianResampler ofB(b, kBootstrapSeed + 1);
    return percentiles([&] { return ofA.next() - ofB.next(); });
}

double cumulativeBand(std::size_t n) {
    return n == 0 ? 1.0
                  : std::min(1.0, std::sqrt(std::log(2.0 / (1.0 - kConfidence)) / (2.0 * static_cast<double>(n))));
}
} // namespace sorvane
