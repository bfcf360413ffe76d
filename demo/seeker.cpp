// The seeker of a threat.
#include "seeker.h"

#include <cmath>
#include <numbers>

namespace sorvane {
namespace {
constexpr double kDegree = std::numbers::pi / 180.0;
constexpr double kGreatestRate = 20.0 * kDegree; // of the gyro, per second
} // namespace

Seeker::Seeker(double fieldOfViewDegrees, const Vec3d& axis)
    : leastCosine_(std::cos(fieldOfViewDegrees / 2.0 * kDegree)), axis_(unit(axis)) {}

std::optional<HeatSource> Seeker::follow(const Vec3d& place, std::span<const HeatSource> sources, double seconds) {
    std::optional<HeatSource> brightest;
    double greatestIrradiance = 0.0;
    for (const HeatSource& source : sources) {
        const Vec3d sight = source.position - place;
        const double irradiance = source.brightness / dot(sight, sight);
        if (irradiance <= greatestIrradiance || dot(axis_, unit(sight)) < leastCosine_)
            continue;
        brightest = source;
        greatestIrradiance = irradiance;
    }
    if (brightest)
        turnTowards(unit(brightest->position - place), seconds);
    return brightest;
}

void Seeker::turnTowards(const Vec3d& direction, double seconds) {
    const double angle = std::atan2(length(cross(axis_, direction)), dot(axis_, direction));
    const double reach = kGreatestRate * seconds;
    // So small a part of the chord is as good as that of the arc.
    axis_ = angle <= reach ? direction : unit(axis_ + reach / angle * (direction - axis_));
}
} // namespace sorvane
