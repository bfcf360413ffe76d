// Where two bodies' signatures differ.
#pragma once

#include <optional>
#include <vector>

#include "signaturemap.h"

namespace sorvane {
// Ten times the decimal logarithm of b / a: 0 for two that are equal, both 0 included, infinite where only one of two
// intensities is 0. Negative intensities count as 0.
double decibels(double a, double b);

struct SignatureComparison {
    SignatureGrid grid{};
    std::vector<double> differences{}; // of the total intensities, dB; by direction as in the maps

    std::size_t onlyInA = 0; // directions in which only one radiates
    std::size_t onlyInB = 0;
    std::size_t greatest = 0;               // the direction of the greatest difference; the first of several
    std::optional<double> rootMeanSquare{}; // of the finite ones by solid angle, dB; nothing without any
    double ofMeans = 0.0;                   // dB of the mean intensities

    double greatestDifference() const { return differences[greatest]; }
    bool agrees(double toleranceDecibels) const;
};

// Of two maps of the same grid.
SignatureComparison compareSignatures(const SignatureMap& a, const SignatureMap& b);
} // namespace sorvane
