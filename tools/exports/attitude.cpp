// Which way a body points: the directions of its axes, and quaternions.
#include "attitude.h"

#include <cmath>

#include "triples.h"

namespace sorvane {
Axes modelAxes(const Triple& anglesDegrees) {
    const double roll = anglesDegrees[0] / kDegreesPerRadian;
    const double pitch = anglesDegrees[1] / kDegreesPerRadian;
    const double yaw = anglesDegrees[2] / kDegreesPerRadian;
    // A model's z points up: it is drawn rolled by half a turn more.
    const double sinRoll = -std::sin(roll);
    const double cosRoll = -std::cos(roll);
    const double sinPitch = std::sin(pitch);
    const double cosPitch = std::cos(pitch);
    const double sinYaw = std::sin(yaw);
    const double cosYaw = std::cos(yaw);
    return {
        Triple{cosYaw * cosPitch, sinYaw * cosPitch, -sinPitch},
        Triple{
            cosYaw * sinPitch * sinRoll - sinYaw * cosRoll, sinYaw * sinPitch * sinRoll + cosYaw * cosRoll,
            cosPitch * sinRoll},
        Triple{
            cosYaw * sinPitch * cosRoll + sinYaw * sinRoll, sinYaw * sinPitch * cosRoll - cosYaw * sinRoll,
            cosPitch * cosRoll},
    };
}

// Begins with the component of the greatest square, which loses no digits.
Quaternion quaternionOf(const Axes& axes) {
    const auto& [x, y, z] = axes;
    const std::array<double, 4> squares = {
        1.0 + x[0] - y[1] - z[2], 1.0 - x[0] + y[1] - z[2], 1.0 - x[0] - y[1] + z[2], 1.0 + x[0] + y[1] + z[2]};
    std::size_t greatest = 0;
    for (std::size_t i = 1; i < squares.size(); ++i)
        greatest = squares[i] > squares[greatest] ? i : greatest;
    const std::array<Quaternion, 4> multiples = {
        Quaternion{squares[0], x[1] + y[0], z[0] + x[2], y[2] - z[1]},
        Quaternion{x[1] + y[0], squares[1], y[2] + z[1], z[0] - x[2]},
        Quaternion{z[0] + x[2], y[2] + z[1], squares[2], x[1] - y[0]},
        Quaternion{y[2] - z[1], z[0] - x[2], x[1] - y[0], squares[3]},
    };
    Quaternion found = multiples[greatest];
    const double length = std::hypot(std::hypot(found[0], found[1], found[2]), found[3]);
    const double divisor = found[3] < 0.0 ? -length : length;
    for (double& component : found)
        component /= divisor;
    return found;
}

Quaternion nearerTo(const Quaternion& previous, const Quaternion& next) {
    double cosine = 0.0;
    for (std::size_t i = 0; i < next.size(); ++i)
        cosine += previous[i] * next[i];
    return cosine < 0.0 ? Quaternion{-next[0], -next[1], -next[2], -next[3]} : next;
}

MapAngles mapAnglesOf(const Axes& axes, const Axes& horizon) {
    const auto& [east, north, up] = horizon;
    const auto& [forwards, left, above] = axes;
    const double noseEast = dot(forwards, east);
    const double noseNorth = dot(forwards, north);
    const double heading = std::atan2(noseEast, noseNorth);
    // Where right points on a level body of this heading. Upright, any heading will do: roll makes up for it.
    const Triple level = difference(scaled(east, std::cos(heading)), scaled(north, std::sin(heading)));
    const double tilt = std::atan2(-dot(forwards, up), std::hypot(noseEast, noseNorth));
    const double roll = std::atan2(-dot(above, level), -dot(left, level));
    const double degrees = heading * kDegreesPerRadian;
    return {degrees < 0.0 ? degrees + 360.0 : degrees, tilt * kDegreesPerRadian, roll * kDegreesPerRadian};
}
} // namespace sorvane
