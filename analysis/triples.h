// Vector arithmetic on triples.
#pragma once

#include <cmath>
#include <numbers>

#include "sample.h"

namespace sorvane {
inline constexpr double kDegreesPerRadian = 180.0 / std::numbers::pi;

inline Triple difference(const Triple& a, const Triple& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline Triple scaled(const Triple& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}

inline double dot(const Triple& a, const Triple& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline Triple cross(const Triple& a, const Triple& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline double length(const Triple& a) {
    return std::sqrt(dot(a, a));
}

// From a to b, exactly these at parts 0 and 1 even if the other is not finite.
inline double blended(double a, double b, double part) {
    if (part == 0.0)
        return a;
    return part == 1.0 ? b : a * (1.0 - part) + b * part;
}

inline Triple blended(const Triple& a, const Triple& b, double part) {
    return {blended(a[0], b[0], part), blended(a[1], b[1], part), blended(a[2], b[2], part)};
}

// The angle between two directions of any length, 0 to 180 with all digits at either end; NaN when one has no length.
inline double degreesBetween(const Triple& a, const Triple& b) {
    const double cosine = dot(a, b); // times both lengths, as the sine
    const double sine = length(cross(a, b));
    return cosine == 0.0 && sine == 0.0 ? std::nan("") : std::atan2(sine, cosine) * kDegreesPerRadian;
}

// Where the x axis of a body with these angles points in the world: roll about x leaves it where it is, pitch about y
// lifts it (world z points down), yaw about z turns it.
inline Triple xAxis(const Triple& anglesDegrees) {
    const double pitch = anglesDegrees[1] / kDegreesPerRadian;
    const double yaw = anglesDegrees[2] / kDegreesPerRadian;
    return {std::cos(yaw) * std::cos(pitch), std::sin(yaw) * std::cos(pitch), -std::sin(pitch)};
}
} // namespace sorvane
