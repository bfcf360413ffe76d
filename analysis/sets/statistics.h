// Statistics of one sample: moments, quantiles, and the 95 % intervals of medians, shares and distributions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>

namespace sorvane {
inline constexpr double kConfidence = 0.95;       // of every interval
inline constexpr int kBootstrapResamples = 10000; // of every bootstrap interval
inline constexpr std::uint64_t kBootstrapSeed = 1;

struct Interval {
    double low = 0.0;
    double high = 0.0;

    bool operator==(const Interval&) const = default;
};

// NaN without values.
double meanOf(std::span<const double> values);
// By n - 1. NaN below two values.
double standardDeviationOf(std::span<const double> values);

// Hyndman and Fan, "Sample Quantiles in Statistical Packages" (1996), type 7: linear between the values, the least at 0
// and the greatest at 1. NaN without values.
double quantileOf(std::span<const double> ascending, double share);
inline double medianOf(std::span<const double> ascending) {
    return quantileOf(ascending, 0.5);
}

// So many of so many.
struct Share {
    std::int64_t count = 0;
    std::int64_t of = 0;

    double value() const; // NaN of none
    bool operator==(const Share&) const = default;
};

// Wilson, "Probable Inference, the Law of Succession, and Statistical Inference" (1927), without correction for
// continuity. NaN of none.
Interval wilsonInterval(const Share& share);
// Of the difference a - b: Newcombe, "Interval Estimation for the Difference Between Independent Proportions" (1998),
// method 10, which joins the Wilson intervals. NaN when either is of none.
Interval newcombeInterval(const Share& a, const Share& b);

// The medians of resamples: of as many values, drawn with replacement. A resample's middle values are those at the
// places of the middle ones of as many even random numbers, and these are beta distributed (David and Nagaraja, "Order
// Statistics"), so that one takes the same time whatever the number of values. The same seed gives the same medians.
class MedianResampler {
public:
    // At least one value; they must outlive it.
    explicit MedianResampler(std::span<const double> ascending, std::uint64_t seed = kBootstrapSeed)
        : values_(ascending), random_(seed) {}

    double next();

private:
    double valueAt(double place) const; // from 0 to 1
    double beta(double a, double b);

    std::span<const double> values_;
    std::mt19937_64 random_;
};

// By the percentiles of bootstrap medians: Efron, "Bootstrap Methods: Another Look at the Jackknife" (1979). NaN below
// two values.
Interval medianInterval(std::span<const double> ascending);
// Of median a - median b, likewise.
Interval medianDifferenceInterval(std::span<const double> a, std::span<const double> b);

// Half the height of a band about the cumulative curve of n values that holds all of the distribution's: Dvoretzky,
// Kiefer and Wolfowitz (1956) with the constant of Massart (1990).
double cumulativeBand(std::size_t n);
} // namespace sorvane
