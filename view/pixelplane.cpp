// The pixels of a perspective picture as parts of the sphere of directions.
#include "pixelplane.h"

#include <cmath>
#include <numbers>

namespace sorvane {
double solidAngleOf(const TangentBox& box) {
    const auto corner = [](double x, double y) {
        return std::atan(x * y / std::sqrt(1.0 + x * x + y * y));
    };
    return corner(box.right, box.top) - corner(box.left, box.top) - corner(box.right, box.bottom) +
           corner(box.left, box.bottom);
}

PixelPlane::PixelPlane(double fieldOfViewDegrees, int width, int height)
    : width_(width), height_(height), pitch_(2.0 * std::tan(fieldOfViewDegrees * std::numbers::pi / 360.0) / height) {}

TangentBox PixelPlane::boxOf(int column, int row) const {
    const double left = (column - width_ / 2.0) * pitch_;
    const double top = (height_ / 2.0 - row) * pitch_;
    return {left, left + pitch_, top - pitch_, top};
}

TangentBox PixelPlane::box() const {
    const double right = width_ * pitch_ / 2.0;
    const double top = height_ * pitch_ / 2.0;
    return {-right, right, -top, top};
}

double PixelPlane::centreSolidAngle() const {
    const double half = pitch_ / 2.0;
    return sorvane::solidAngleOf({-half, half, -half, half});
}
} // namespace sorvane
