// A body's signature: its radiant intensity in all directions.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

#include "facetshading.h"
#include "facetvisibility.h"

namespace sorvane {
// Directions in body axes, in degrees. Azimuth runs from the nose (0) to the right (90), over the tail (180) to the
// left (270); elevation is 0 at the level of the wings and 90 above. Rows of one elevation begin with the lowest.
class SignatureGrid {
public:
    static constexpr double kUsualStep = 5.0;
    static constexpr double kLeastStep = 0.5;

    // Whether steps of so many degrees meet the nose, the wings and the poles.
    static bool isStep(double degrees);

    SignatureGrid() : SignatureGrid(kUsualStep) {}
    // The body is seen from the range, in its units, or from far away.
    explicit SignatureGrid(double stepDegrees, double range = Viewpoint().range);

    double step() const { return step_; }
    double range() const { return range_; }
    std::size_t azimuthCount() const { return 4 * quarter_; }
    std::size_t elevationCount() const { return 2 * quarter_ + 1; }
    std::size_t size() const { return azimuthCount() * elevationCount(); }
    double azimuth(std::size_t column) const { return static_cast<double>(column) * step_; }
    double elevation(std::size_t row) const { return static_cast<double>(row) * step_ - 90.0; }
    std::size_t level() const { return quarter_; } // the row of elevation 0
    std::size_t rowNearest(double elevation) const;

    // The solid angle in steradians that each direction of a row stands for; 4π over all directions.
    double solidAngle(std::size_t row) const;

    bool operator==(const SignatureGrid&) const = default;

private:
    double step_;
    double range_;
    std::size_t quarter_; // steps to 90 degrees
};

// A unit vector in model axes: x forward, y left, z up.
Vec3d directionOf(double azimuthDegrees, double elevationDegrees);

struct SignaturePoint {
    SignatureParts intensity;   // W/sr
    double projectedArea = 0.0; // m², of what can be seen
};

struct SignatureMap {
    SignatureGrid grid{};
    std::vector<SignaturePoint> points{}; // row after row

    const SignaturePoint& at(std::size_t row, std::size_t column) const {
        return points[row * grid.azimuthCount() + column];
    }
    // Over all directions, each by its solid angle.
    SignaturePoint mean() const;
    // Its number among the points; the first of several.
    std::size_t brightest() const;
};

struct SignatureWork {
    int pixels = FacetVisibility::kUsualPixels; // to a side of the picture that tells what is hidden
    unsigned threads = 0;                       // as many as there are processors
    // Called now and then on the caller's thread with the share that is done; false ends the work.
    std::function<bool(double)> progress{};
};

// The intensity towards one viewpoint: the sum over the facets of radiance times visible projected area. From a finite
// range it is the apparent one, the irradiance there times the range squared: a facet counts by the direction and the
// square of the distance from its middle to the viewpoint, and so does the area.
class SignatureSum {
public:
    // Keeps references to body and shading. `metresPerUnit` is the length of the body's unit.
    SignatureSum(const SignatureBody& body, const FacetShading& shading, double metresPerUnit, int pixels);

    SignaturePoint towards(const Viewpoint& viewpoint);

private:
    const SignatureBody& body_;
    const FacetShading& shading_;
    double squareMetres_;
    FacetVisibility visibility_;
    std::vector<float> shares_;
};

// The same whatever the number of threads. Without points when the work was ended.
SignatureMap signatureOf(
    const SignatureBody& body, const SignatureLight& light, const SignatureGrid& grid, double metresPerUnit,
    const SignatureWork& work = {});
} // namespace sorvane
