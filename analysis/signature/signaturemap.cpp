// A body's signature: its radiant intensity in all directions.
#include "signaturemap.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <numbers>
#include <thread>

namespace sorvane {
namespace {
constexpr double kRadiansPerDegree = std::numbers::pi / 180.0;
constexpr double kSquareCentimetres = 1e4; // in a square metre

void add(SignaturePoint& sum, const SignaturePoint& point, double weight) {
    sum.intensity.own += weight * point.intensity.own;
    sum.intensity.sun += weight * point.intensity.sun;
    sum.intensity.skyAndEarth += weight * point.intensity.skyAndEarth;
    sum.intensity.otherFacets += weight * point.intensity.otherFacets;
    sum.projectedArea += weight * point.projectedArea;
}

double sine(double degrees) {
    return std::sin(std::clamp(degrees, -90.0, 90.0) * kRadiansPerDegree);
}

// Exact where the result should be: the nose, the wings and the poles are met by many a facet's edge.
double exactSine(double degrees) {
    const double turn = std::remainder(degrees, 360.0);
    if (turn == 0.0 || std::abs(turn) == 180.0)
        return 0.0;
    if (std::abs(turn) == 90.0)
        return std::copysign(1.0, turn);
    return std::sin(turn * kRadiansPerDegree);
}
} // namespace

bool SignatureGrid::isStep(double degrees) {
    if (!(degrees >= kLeastStep) || degrees > 90.0)
        return false;
    const double steps = 90.0 / degrees;
    return std::abs(steps - std::round(steps)) < 1e-9;
}

SignatureGrid::SignatureGrid(double stepDegrees, double range)
    : step_(stepDegrees), range_(range), quarter_(static_cast<std::size_t>(std::lround(90.0 / stepDegrees))) {}

std::size_t SignatureGrid::rowNearest(double elevation) const {
    return static_cast<std::size_t>(std::lround((std::clamp(elevation, -90.0, 90.0) + 90.0) / step_));
}

double SignatureGrid::solidAngle(std::size_t row) const {
    const double middle = elevation(row);
    const double band = sine(middle + step_ / 2.0) - sine(middle - step_ / 2.0);
    return 2.0 * std::numbers::pi * band / static_cast<double>(azimuthCount());
}

Vec3d directionOf(double azimuthDegrees, double elevationDegrees) {
    const double level = exactSine(elevationDegrees + 90.0);
    return {level * exactSine(azimuthDegrees + 90.0), -level * exactSine(azimuthDegrees), exactSine(elevationDegrees)};
}

SignaturePoint SignatureMap::mean() const {
    SignaturePoint sum;
    for (std::size_t row = 0; row < grid.elevationCount(); ++row)
        for (std::size_t column = 0; column < grid.azimuthCount(); ++column)
            add(sum, at(row, column), grid.solidAngle(row) / (4.0 * std::numbers::pi));
    return sum;
}

std::size_t SignatureMap::brightest() const {
    const auto total = [](const SignaturePoint& point) {
        return point.intensity.total();
    };
    return static_cast<std::size_t>(std::ranges::max_element(points, {}, total) - points.begin());
}

SignatureSum::SignatureSum(const SignatureBody& body, const FacetShading& shading, double metresPerUnit, int pixels)
    : body_(body), shading_(shading), squareMetres_(metresPerUnit * metresPerUnit), visibility_(pixels) {}

SignaturePoint SignatureSum::towards(const Viewpoint& viewpoint) {
    visibility_.look(body_, viewpoint, shares_);
    SignaturePoint sum;
    for (std::size_t k = 0; k < shares_.size(); ++k) {
        if (shares_[k] == 0.0F)
            continue;
        const SignatureBody::Facet& facet = body_.facets()[k];
        Vec3d direction = viewpoint.towards;
        double enlargement = 1.0;
        if (!viewpoint.isFar()) {
            const Vec3d away = viewpoint.from((1.0 / 3.0) * (facet.corners[0] + facet.corners[1] + facet.corners[2]));
            direction = unit(away);
            enlargement = viewpoint.range * viewpoint.range / dot(away, away);
        }
        const Vec3f viewer{
            static_cast<float>(direction.x), static_cast<float>(direction.y), static_cast<float>(direction.z)};
        const double area = double{shares_[k]} * dot(facet.area, direction) * enlargement * squareMetres_;
        add(sum, {shading_.towards(k, viewer), 1.0 / kSquareCentimetres}, area * kSquareCentimetres);
    }
    return sum;
}

SignatureMap signatureOf(
    const SignatureBody& body, const SignatureLight& light, const SignatureGrid& grid, double metresPerUnit,
    const SignatureWork& work) {
    const FacetShading shading(body, light);
    SignatureMap map{grid, std::vector<SignaturePoint>(grid.size())};
    const std::size_t columns = grid.azimuthCount();
    std::atomic<std::size_t> next = 0;
    std::atomic<bool> isEnded = false;
    const auto workOn = [&](bool isCaller) {
        SignatureSum sum(body, shading, metresPerUnit, work.pixels);
        for (std::size_t i = next++; i < grid.size() && !isEnded; i = next++) {
            const std::size_t row = i / columns;
            const bool isPole = row == 0 || row + 1 == grid.elevationCount();
            if (!isPole || i % columns == 0) // one direction, whatever the azimuth
                map.points[i] =
                    sum.towards({directionOf(grid.azimuth(i % columns), grid.elevation(row)), grid.range()});
            if (isCaller && work.progress && !work.progress(static_cast<double>(i) / static_cast<double>(grid.size())))
                isEnded = true;
        }
    };
    {
        const unsigned threads = work.threads != 0 ? work.threads : std::max(std::thread::hardware_concurrency(), 1U);
        std::vector<std::jthread> others;
        for (unsigned i = 1; i < threads; ++i)
            others.emplace_back(workOn, false);
        workOn(true);
    }
    if (isEnded) {
        map.points.clear();
        return map;
    }
    std::fill_n(map.points.begin(), columns, map.points.front());
    const auto top = map.points.end() - static_cast<std::ptrdiff_t>(columns);
    std::fill(top, map.points.end(), *top);
    return map;
}
} // namespace sorvane
