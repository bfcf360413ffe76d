// Places the positions of a trajectory on the Earth.
#include "geodetic.h"

#include <cmath>
#include <numbers>

namespace sorvane {
namespace {
// WGS-84's defining values: equatorial radius in metres, flattening.
constexpr double kEquatorialRadius = 6378137.0;
constexpr double kFlattening = 1.0 / 298.257223563;
constexpr double kPolarRadius = kEquatorialRadius * (1.0 - kFlattening);
constexpr double kEccentricity2 = kFlattening * (2.0 - kFlattening);
constexpr double kSecondEccentricity2 = kEccentricity2 / (1.0 - kEccentricity2);
constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;

constexpr double kGreatestHeight = 1e12; // metres: beyond the planets

// Radius of curvature across the meridian.
double normalRadius(double sineOfLatitude) {
    return kEquatorialRadius / std::sqrt(1.0 - kEccentricity2 * sineOfLatitude * sineOfLatitude);
}

// Bowring's formula for the latitude, from one parametric latitude to the next: near the surface the first step is
// exact to a nanometre already.
GeodeticPosition geodeticOf(const double (&centred)[3]) {
    constexpr int kSteps = 4;
    const double fromAxis = std::hypot(centred[0], centred[1]);
    double parametric = std::atan2(centred[2] * kEquatorialRadius, fromAxis * kPolarRadius);
    double latitude = 0.0;
    for (int step = 0; step < kSteps; ++step) {
        const double sine = std::sin(parametric);
        const double cosine = std::cos(parametric);
        latitude = std::atan2(
            centred[2] + kSecondEccentricity2 * kPolarRadius * sine * sine * sine,
            fromAxis - kEccentricity2 * kEquatorialRadius * cosine * cosine * cosine);
        parametric = std::atan2((1.0 - kFlattening) * std::sin(latitude), std::cos(latitude));
    }
    const double sine = std::sin(latitude);
    const double height =
        fromAxis * std::cos(latitude) + centred[2] * sine - kEquatorialRadius * kEquatorialRadius / normalRadius(sine);
    return {latitude / kRadiansPerDegree, std::atan2(centred[1], centred[0]) / kRadiansPerDegree, height};
}
} // namespace

bool isOnMap(const GeodeticPosition& position) {
    return std::isfinite(position.latitudeDegrees) && std::isfinite(position.longitudeDegrees) &&
           std::abs(position.height) <= kGreatestHeight;
}

Axes horizonAt(const GeodeticPosition& position) {
    const double sinLat = std::sin(position.latitudeDegrees * kRadiansPerDegree);
    const double cosLat = std::cos(position.latitudeDegrees * kRadiansPerDegree);
    const double sinLon = std::sin(position.longitudeDegrees * kRadiansPerDegree);
    const double cosLon = std::cos(position.longitudeDegrees * kRadiansPerDegree);
    return {
        Triple{-sinLon, cosLon, 0.0},
        Triple{-sinLat * cosLon, -sinLat * sinLon, cosLat},
        Triple{cosLat * cosLon, cosLat * sinLon, sinLat},
    };
}

LocalFrame::LocalFrame(const GeodeticPosition& origin, double xBearingDegrees, double metresPerUnit)
    : metresPerUnit_(metresPerUnit) {
    const double sinBearing = std::sin(xBearingDegrees * kRadiansPerDegree);
    const double cosBearing = std::cos(xBearingDegrees * kRadiansPerDegree);
    const auto [east, north, up] = horizonAt(origin);
    const double radius = normalRadius(up[2]);
    for (std::size_t i = 0; i < 3; ++i) {
        const double flattened = i == 2 ? 1.0 - kEccentricity2 : 1.0;
        origin_[i] = (radius * flattened + origin.height) * up[i];
        axes_[0][i] = metresPerUnit * (sinBearing * east[i] + cosBearing * north[i]);
        axes_[1][i] = metresPerUnit * (cosBearing * east[i] - sinBearing * north[i]);
        axes_[2][i] = -metresPerUnit * up[i];
    }
}

GeodeticPosition LocalFrame::positionOf(const Triple& units) const {
    double centred[3];
    for (std::size_t i = 0; i < 3; ++i)
        centred[i] = origin_[i] + units[0] * axes_[0][i] + units[1] * axes_[1][i] + units[2] * axes_[2][i];
    return geodeticOf(centred);
}

Axes LocalFrame::turned(const Axes& axes) const {
    Axes centred{};
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (std::size_t i = 0; i < 3; ++i)
            centred[axis][i] =
                (axes[axis][0] * axes_[0][i] + axes[axis][1] * axes_[1][i] + axes[axis][2] * axes_[2][i]) /
                metresPerUnit_;
    return centred;
}
} // namespace sorvane
