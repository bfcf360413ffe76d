// A flare as an ellipsoid.
#include "flareshape.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sorvane {
std::array<float, 3> halfAxesOf(const flareKeyframe& flare, double distance) {
    constexpr double kSmall = 1e-6; // of the distance
    constexpr float kFlat = 1e-3F;  // of the largest half axis
    std::array<float, 3> halfAxes{};
    std::ranges::transform(flare.intensity, halfAxes.begin(), [](float axis) { return std::abs(axis); });
    const float largest = std::ranges::max(halfAxes);
    if (!(largest > 0.0F) || !std::isfinite(largest))
        halfAxes.fill(static_cast<float>(kSmall * distance));
    else
        for (float& axis : halfAxes)
            axis = std::max(axis, kFlat * largest);
    return halfAxes;
}

Matrix<float> modelOf(const flareKeyframe& flare, const std::array<float, 3>& halfAxes) {
    return BuildTransform(
        halfAxes[0], halfAxes[1], halfAxes[2], flare.values[0], flare.values[1], flare.values[2], 0.0F, 0.0F, 0.0F);
}

double projectedArea(const flareKeyframe& flare, const std::array<float, 3>& halfAxes, const std::array<double, 3>& d) {
    const Matrix<float> turn = modelOf(flare, {1.0F, 1.0F, 1.0F});
    double squares = 0.0;
    for (int axis = 0; axis < 3; ++axis) {
        const auto number = static_cast<std::size_t>(axis);
        const double along = turn(0, axis) * d[0] + turn(1, axis) * d[1] + turn(2, axis) * d[2];
        const double others = double{halfAxes[(number + 1) % 3]} * double{halfAxes[(number + 2) % 3]};
        squares += along * along * others * others;
    }
    return std::numbers::pi * std::sqrt(squares / (d[0] * d[0] + d[1] * d[1] + d[2] * d[2]));
}
} // namespace sorvane
