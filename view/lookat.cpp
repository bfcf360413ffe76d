// The camera's look-at transform, taken from points of reference near what is drawn.
#include "lookat.h"

#include <array>
#include <cmath>

#include "camera.h"
#include "glapi.h"

namespace sorvane {
namespace {
using Direction = std::array<double, 3>;

Direction normalised(const Direction& v) {
    const double length = std::hypot(v[0], v[1], v[2]);
    return length == 0.0 ? v : Direction{v[0] / length, v[1] / length, v[2] / length};
}

Direction cross(const Direction& a, const Direction& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
} // namespace

LookAt::LookAt(const Camera& camera) : LookAt(camera.eye(), camera.look()) {}

LookAt::LookAt(const Vector<float>& eye, const Vector<float>& look) : eye_(eye), look_(look) {
    const Direction forward = normalised({look_.ElementAt(0), look_.ElementAt(1), look_.ElementAt(2)});
    const Direction right = normalised(cross(forward, {0.0, 0.0, -1.0}));
    const Direction up = cross(right, forward);
    for (int col = 0; col < 3; ++col) {
        const auto axis = static_cast<std::size_t>(col);
        rotation_(0, col) = static_cast<float>(right[axis]);
        rotation_(1, col) = static_cast<float>(up[axis]);
        rotation_(2, col) = static_cast<float>(-forward[axis]);
    }
}

Matrix<float> LookAt::modelView(std::span<const float, 3> origin) const {
    // By the rotation as it is rounded, so that things with different origins fit each other.
    Matrix<float> matrix = rotation_;
    for (int row = 0; row < 3; ++row) {
        double offset = 0.0;
        for (int axis = 0; axis < 3; ++axis)
            offset +=
                rotation_(row, axis) * (double{origin[static_cast<std::size_t>(axis)]} - double{eye_.ElementAt(axis)});
        matrix(row, 3) = static_cast<float>(offset);
    }
    return matrix;
}

std::array<double, 3> LookAt::inEye(std::span<const float, 3> position) const {
    const Matrix<float> matrix = modelView(position);
    return {matrix(0, 3), matrix(1, 3), matrix(2, 3)};
}

double LookAt::depthOf(std::span<const float, 3> position) const {
    return -inEye(position)[2];
}

DepthInterval LookAt::depthsOf(const Box& box, std::span<const float, 3> origin) const {
    double middle = depthOf(origin);
    double reach = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double slope = -double{rotation_(2, static_cast<int>(axis))};
        middle += slope * (double{box.low[axis]} + double{box.high[axis]}) / 2.0;
        reach += std::abs(slope * (double{box.high[axis]} - double{box.low[axis]}) / 2.0);
    }
    return {middle - reach, middle + reach};
}

void LookAt::load(std::span<const float, 3> origin) const {
    glLoadMatrixf(modelView(origin).data());
}

void LookAt::loadWorld() const {
    const auto centre = [this](int axis) {
        return double{eye_.ElementAt(axis)} + double{look_.ElementAt(axis)};
    };
    glLoadIdentity();
    gluLookAt(eye_.ElementAt(0), eye_.ElementAt(1), eye_.ElementAt(2), centre(0), centre(1), centre(2), 0.0, 0.0, -1.0);
}
} // namespace sorvane
