// Where two bodies' signatures differ.
#include "signaturecomparison.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sorvane {
double decibels(double a, double b) {
    a = std::max(a, 0.0);
    b = std::max(b, 0.0);
    if (a == b)
        return 0.0;
    if (a == 0.0)
        return std::numeric_limits<double>::infinity();
    if (b == 0.0)
        return -std::numeric_limits<double>::infinity();
    return 10.0 * (std::log10(b) - std::log10(a));
}

SignatureComparison compareSignatures(const SignatureMap& a, const SignatureMap& b) {
    SignatureComparison comparison{.grid = a.grid};
    double squares = 0.0;
    double angles = 0.0;
    for (std::size_t i = 0; i < a.points.size(); ++i) {
        const double difference = decibels(a.points[i].intensity.total(), b.points[i].intensity.total());
        comparison.differences.push_back(difference);
        if (std::abs(difference) > std::abs(comparison.greatestDifference()))
            comparison.greatest = i;
        if (std::isfinite(difference)) {
            const double angle = a.grid.solidAngle(i / a.grid.azimuthCount());
            squares += angle * difference * difference;
            angles += angle;
        } else {
            ++(difference < 0.0 ? comparison.onlyInA : comparison.onlyInB);
        }
    }
    if (angles > 0.0)
        comparison.rootMeanSquare = std::sqrt(squares / angles);
    comparison.ofMeans = decibels(a.mean().intensity.total(), b.mean().intensity.total());
    return comparison;
}

bool SignatureComparison::agrees(double toleranceDecibels) const {
    return std::abs(greatestDifference()) <= toleranceDecibels;
}
} // namespace sorvane
