// The camera that shows a whole engagement.
#include "overview.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "camera.h"
#include "etxyz.h"
#include "projection.h"

namespace sorvane {
namespace {
using Point = std::array<double, 3>;

constexpr double kRoom = 0.9;     // the part of the picture that the points may fill
constexpr double kNearest = 10.0; // units from the eye to the nearest point, so that a single one is seen
constexpr double kTurn = -60.0;   // degrees about the vertical, from looking along +x
constexpr double kDescent = 25.0; // degrees below the horizon

double radians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}

double dot(const Point& a, const Point& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

// The axes of the picture. World z points down.
struct Axes {
    Point forward{
        std::cos(radians(kDescent)) * std::cos(radians(kTurn)), std::cos(radians(kDescent)) * std::sin(radians(kTurn)),
        std::sin(radians(kDescent))};
    Point right{-std::sin(radians(kTurn)), std::cos(radians(kTurn)), 0.0};
    Point up{
        std::sin(radians(kDescent)) * std::cos(radians(kTurn)), std::sin(radians(kDescent)) * std::sin(radians(kTurn)),
        -std::cos(radians(kDescent))};
};

// Where along one axis of the picture the eye is, and how far back it is at least. A point at `across` and `ahead` of
// where the eye begins is seen from `back` behind when |across − middle| ≤ tangent · (ahead + back); of all points the
// two that reach farthest to the sides decide.
class Fit {
public:
    explicit Fit(double tangent) : tangent_(tangent) {}

    void add(double across, double ahead) {
        least_ = std::min(least_, across + tangent_ * ahead);
        greatest_ = std::max(greatest_, across - tangent_ * ahead);
    }
    double middle() const { return (least_ + greatest_) / 2.0; }
    double back() const { return (greatest_ - least_) / (2.0 * tangent_); }

private:
    double tangent_;
    double least_ = std::numeric_limits<double>::max();
    double greatest_ = std::numeric_limits<double>::lowest();
};

Vector<float> position(const Point& point) {
    return {static_cast<float>(point[0]), static_cast<float>(point[1]), static_cast<float>(point[2]), 1.0F};
}
Point exact(const Vector<float>& vector) {
    return {double{vector.ElementAt(0)}, double{vector.ElementAt(1)}, double{vector.ElementAt(2)}};
}

// Calls `visit` with where bodies and flares have been, for as long as it is true; whether it was to the end.
template <class Visit> bool visitPaths(const etxyz& engagement, const Visit& visit) {
    const auto isVisited = [&visit](const float(&xyz)[3]) {
        const Point point = {double{xyz[0]}, double{xyz[1]}, double{xyz[2]}};
        const bool isFinite = std::ranges::all_of(point, [](double value) { return std::isfinite(value); });
        return !isFinite || visit(point);
    };
    return std::ranges::all_of(engagement.keyframes, [&](const keyframe& sample) {
        return isVisited(sample.targetPos) && isVisited(sample.threatPos) &&
               std::ranges::all_of(sample.flares, [&](const flareKeyframe& flare) { return isVisited(flare.pos); });
    });
}
} // namespace

Viewpoint viewpointOver(std::span<const Point> points, double fieldOfViewDegrees, int width, int height) {
    const Axes axes;
    const double tangent = kRoom * std::tan(radians(fieldOfViewDegrees) / 2.0);
    Fit sideways(tangent * width / height);
    Fit upwards(tangent);
    double nearest = std::numeric_limits<double>::max();
    double farthest = std::numeric_limits<double>::lowest();
    for (const Point& point : points) {
        const double ahead = dot(point, axes.forward);
        sideways.add(dot(point, axes.right), ahead);
        upwards.add(dot(point, axes.up), ahead);
        nearest = std::min(nearest, ahead);
        farthest = std::max(farthest, ahead);
    }
    const double back = std::max({sideways.back(), upwards.back(), kNearest - nearest});
    const auto place = [&](double ahead) {
        Point world{};
        for (std::size_t i = 0; i < world.size(); ++i)
            world[i] = sideways.middle() * axes.right[i] + upwards.middle() * axes.up[i] + ahead * axes.forward[i];
        return position(world);
    };
    return {place(-back), place((nearest + farthest) / 2.0)};
}

Viewpoint overviewOf(const etxyz& engagement, double fieldOfViewDegrees, int width, int height) {
    std::vector<Point> points;
    visitPaths(engagement, [&points](const Point& point) {
        points.push_back(point);
        return true;
    });
    if (points.empty())
        points.push_back({});
    return viewpointOver(points, fieldOfViewDegrees, width, height);
}

bool isBeyondSight(const etxyz& engagement, const Camera& camera) {
    const Point eye = exact(camera.eye());
    const Point look = exact(camera.look());
    const double length = std::sqrt(dot(look, look));
    return visitPaths(engagement, [&](const Point& point) {
        return dot({point[0] - eye[0], point[1] - eye[1], point[2] - eye[2]}, look) > kFarDepth * length;
    });
}
} // namespace sorvane
