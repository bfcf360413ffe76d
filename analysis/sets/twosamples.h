// Whether two samples may come from one distribution.
#pragma once

#include <span>

namespace sorvane {
// p is the chance of a statistic at least as far out, both sides together, when the distributions are the same.
struct KolmogorovSmirnov {
    double distance = 0.0; // the greatest one of the cumulative curves
    double p = 1.0;
    bool isExact = true;
};

// Exact for up to ten million pairs, ties counted, over all orders of the values (Schröer and Trenkler, "Exact and
// Randomization Distributions of Kolmogorov-Smirnov Tests Two or Three Samples", 1995); beyond by Smirnov's limit
// (1948), which is then on the safe side. Values in ascending order, at least one each.
KolmogorovSmirnov kolmogorovSmirnov(std::span<const double> a, std::span<const double> b);

struct MannWhitney {
    double greater = 0.0; // the share of pairs in which the value of a is the greater, equal ones by half
    double p = 1.0;
    bool isExact = true;
};

// Mann and Whitney, "On a Test of Whether one of Two Random Variables is Stochastically Larger than the Other" (1947).
// Exact for up to 40 values together, ties counted; beyond by the normal distribution, its variance less for ties
// (Lehmann, "Nonparametrics"), with the correction for continuity. Likewise.
MannWhitney mannWhitney(std::span<const double> a, std::span<const double> b);
} // namespace sorvane
