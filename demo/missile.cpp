// The stock threats: a missile of 2.8 metres and a bullet of 0.2 metres.
#include <cmath>
#include <numbers>

#include "body.h"
#include "loft.h"

namespace sorvane {
namespace {
constexpr Part kCase = {Material::Paint, 281.0};
constexpr Part kMotorCase = {Material::Paint, 296.0};
constexpr Part kFin = {Material::Metal, 282.0};
constexpr Part kDome = {Material::Canopy, 282.0};
constexpr Part kSeeker = {Material::Metal, 280.0};
constexpr Part kNozzle = {Material::Nozzle, 346.0};
constexpr Part kJacket = {Material::Metal, 290.0};
constexpr Part kTracer = {Material::Nozzle, 352.0};

Oval circle(double x, double radius, Part part) {
    return {x, radius, radius, {}, 2.0, part};
}

// Four alike around the axis of the missile, in an X.
Mesh fins(double rootX, double rootChord, double tipX, double tipChord, double innerRadius, double outerRadius) {
    Mesh mesh;
    for (int i = 0; i < 4; ++i) {
        const double angle = std::numbers::pi * (0.25 + 0.5 * i);
        const Vec3d outwards = {0.0, std::cos(angle), std::sin(angle)};
        const Vec3d across = {0.0, -std::sin(angle), std::cos(angle)};
        const WingEnd root = {innerRadius * outwards + Vec3d{rootX, 0.0, 0.0}, rootChord, 0.05};
        const WingEnd tip = {outerRadius * outwards + Vec3d{tipX, 0.0, 0.0}, tipChord, 0.05};
        append(mesh, wing(root, tip, 2, 4, across, kFin));
    }
    return mesh;
}
} // namespace

Body missile() {
    const std::vector<Oval> ovals = {
        circle(1.38, 0.022, kDome),        circle(1.36, 0.036, kDome),        circle(1.33, 0.045, kSeeker),
        circle(1.24, 0.054, kSeeker),      circle(1.10, 0.0635, kCase),       circle(0.80, 0.0635, kCase),
        circle(0.40, 0.0635, kCase),       circle(0.00, 0.0635, kMotorCase),  circle(-0.40, 0.0635, kMotorCase),
        circle(-0.80, 0.0635, kMotorCase), circle(-1.20, 0.0635, kMotorCase), circle(-1.34, 0.0635, kMotorCase),
        circle(-1.40, 0.058, kNozzle),     circle(-1.40, 0.046, kNozzle),     circle(-1.33, 0.030, kNozzle),
    };
    Body body;
    body.stagnationHeating = 45.0;
    append(body.mesh, loft({1.385, 0.0, 0.0}, kDome, ovalSections(ovals, 20), {-1.32, 0.0, 0.0}));
    append(body.mesh, fins(0.98, 0.14, 0.93, 0.06, 0.055, 0.19));
    append(body.mesh, fins(-0.98, 0.38, -1.14, 0.20, 0.055, 0.27));
    return body;
}

Body bullet() {
    const std::vector<Oval> ovals = {
        circle(0.095, 0.003, kJacket),  circle(0.075, 0.009, kJacket),  circle(0.045, 0.0155, kJacket),
        circle(0.010, 0.020, kJacket),  circle(-0.030, 0.020, kCase),   circle(-0.075, 0.020, kJacket),
        circle(-0.095, 0.017, kTracer), circle(-0.095, 0.012, kTracer), circle(-0.085, 0.010, kTracer),
    };
    Body body;
    body.stagnationHeating = 50.0;
    append(body.mesh, loft({0.10, 0.0, 0.0}, kJacket, ovalSections(ovals, 16), {-0.084, 0.0, 0.0}));
    return body;
}
} // namespace sorvane
