// Counts values by equal steps.
#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace sorvane {
struct Histogram {
    double low = 0.0;   // where the first step begins
    double width = 1.0; // of a step, above 0
    std::vector<std::size_t> counts;

    // The step of a value from low to high(); the last one has its upper end, too.
    std::size_t stepOf(double value) const;
    double high() const { return low + width * static_cast<double>(counts.size()); }
};

// The steps are round numbers, as wide as Freedman and Diaconis have it (twice the interquartile range through the cube
// root of the number n of values), or Sturges (the range through log2 n + 1) where that is less: two heaps that lie far
// apart are no single bar. There are no more than 500 of them; of whole numbers that lie close, one for each. Values
// that are no finite numbers aren't counted; without any other there are no steps.
Histogram histogramOf(std::span<const double> values);
// Between which of the values all but a hundredth lie, half of it at each end, where that makes the range less than
// half as wide; all otherwise.
std::pair<double, double> mostOf(std::span<const double> values);
// Counts those that are marked, by the same steps.
std::vector<std::size_t>
countMarked(const Histogram& steps, std::span<const double> values, std::span<const std::uint8_t> marks);
} // namespace sorvane
