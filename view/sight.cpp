// What of the world a picture shows.
#include "sight.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sorvane {
namespace {
constexpr double kMarginPixels = 8.0;
// What single precision makes of a place, in parts of its distance from the eye.
constexpr double kRounding = 1e-5;
} // namespace

Sight::Sight(const LookAt& lookAt, const WindowTransform& window)
    : lookAt_(lookAt), pixelsPerTangent_(std::abs(window.projection[5]) * window.viewport[3] / 2.0) {
    for (std::size_t side = 0; side < sides_.size(); ++side) {
        const std::size_t row = side / 2; // x, y of the picture, which go from -w to w
        const double sign = side % 2 == 0 ? 1.0 : -1.0;
        const double margin = 1.0 + 2.0 * kMarginPixels / std::max(window.viewport[2 + row], 1);
        const auto term = [&](std::size_t column) {
            return margin * window.projection[4 * column + 3] + sign * window.projection[4 * column + row];
        };
        const double length = std::hypot(term(0), term(1), term(2));
        sides_[side] = {{term(0) / length, term(1) / length, term(2) / length}, term(3) / length};
    }
}

bool Sight::reaches(std::span<const float, 3> position, double radius) const {
    const std::array<double, 3> centre = lookAt_.inEye(position);
    const double reach = radius + kRounding * std::hypot(centre[0], centre[1], centre[2]);
    return std::ranges::none_of(sides_, [&](const Plane& side) { return side.distanceOf(centre) < -reach; });
}

bool Sight::reaches(const Box& box, std::span<const float, 3> origin) const {
    std::array<double, 3> centre = lookAt_.inEye(origin);
    std::array<std::array<double, 3>, 3> halves{}; // of the box's edges
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (std::size_t row = 0; row < 3; ++row) {
            const double slope = lookAt_.rotation()(static_cast<int>(row), static_cast<int>(axis));
            const double low = box.low[axis];
            const double high = box.high[axis];
            centre[row] += slope * (low + high) / 2.0;
            halves[axis][row] = slope * (high - low) / 2.0;
        }
    const double rounding = kRounding * std::hypot(centre[0], centre[1], centre[2]);
    return std::ranges::none_of(sides_, [&](const Plane& side) {
        double reach = rounding;
        for (const auto& [x, y, z] : halves)
            reach += std::abs(side.normal[0] * x + side.normal[1] * y + side.normal[2] * z);
        return side.distanceOf(centre) < -reach;
    });
}

double Sight::pixelsOf(double length, const Box& box, std::span<const float, 3> origin) const {
    const double nearest = lookAt_.depthsOf(box, origin).nearest;
    return nearest > 0.0 ? length * pixelsPerTangent_ / nearest : std::numeric_limits<double>::infinity();
}

double Sight::pixelsAcross(std::span<const float, 3> position, double radius) const {
    const double depth = lookAt_.depthOf(position);
    if (!(depth > radius))
        return std::numeric_limits<double>::infinity();
    return 2.0 * radius * pixelsPerTangent_ / depth;
}
} // namespace sorvane
