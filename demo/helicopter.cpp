// A helicopter with a main rotor of 13 metres and a tail rotor.
#include "body.h"
#include "loft.h"

namespace sorvane {
namespace {
constexpr Part kSkin = {Material::Paint, 274.0};
constexpr Part kGlass = {Material::Canopy, 272.0};
constexpr Part kCowling = {Material::Paint, 288.0};
constexpr Part kPipe = {Material::Metal, 300.0};
constexpr Part kExhaust = {Material::Nozzle, 338.0};
constexpr Part kTube = {Material::Metal, 270.0};
constexpr Part kHead = {Material::Metal, 282.0};
constexpr Part kBlade = {Material::Radome, 274.0};
constexpr Vec3d kUp = {0.0, 0.0, 1.0};
constexpr Vec3d kLeft = {0.0, 1.0, 0.0};
constexpr Vec3d kMainHub = {0.0, 0.0, 1.95};
constexpr Vec3d kTailHub = {-7.05, 0.42, 1.40};

Oval oval(double x, double halfWidth, double halfHeight, double y, double z, Part part, double squareness = 2.0) {
    return {x, halfWidth, halfHeight, {0.0, y, z}, squareness, part};
}

Mesh fuselage() {
    const std::vector<Oval> ovals = {
        oval(4.00, 0.26, 0.24, 0.0, -0.40, kSkin),      oval(3.30, 0.68, 0.62, 0.0, -0.30, kSkin),
        oval(2.40, 0.94, 0.92, 0.0, -0.10, kSkin),      oval(1.00, 1.05, 1.12, 0.0, 0.00, kSkin, 2.6),
        oval(-0.80, 1.00, 1.08, 0.0, 0.04, kSkin, 2.6), oval(-2.00, 0.62, 0.72, 0.0, 0.28, kSkin),
        oval(-3.20, 0.32, 0.36, 0.0, 0.50, kSkin),      oval(-5.00, 0.22, 0.25, 0.0, 0.60, kSkin),
        oval(-6.90, 0.14, 0.17, 0.0, 0.70, kSkin),
    };
    return loft({4.20, 0.0, -0.42}, kSkin, ovalSections(smoothed(ovals, 3), 24), {-7.05, 0.0, 0.70});
}

Mesh canopy() {
    const std::vector<Oval> ovals = {
        oval(3.55, 0.34, 0.26, 0.0, -0.02, kGlass), oval(3.05, 0.76, 0.62, 0.0, 0.08, kGlass),
        oval(2.40, 0.95, 0.82, 0.0, 0.22, kGlass),  oval(1.60, 0.98, 0.86, 0.0, 0.34, kGlass),
        oval(0.90, 0.60, 0.50, 0.0, 0.55, kGlass),
    };
    return loft({3.72, 0.0, -0.08}, kGlass, ovalSections(smoothed(ovals, 3), 20), {0.70, 0.0, 0.60});
}

Mesh cowling() {
    const std::vector<Oval> ovals = {
        oval(1.20, 0.40, 0.20, 0.0, 1.10, kCowling, 3.0),
        oval(0.60, 0.62, 0.44, 0.0, 1.16, kCowling, 3.0),
        oval(-0.80, 0.62, 0.46, 0.0, 1.14, kCowling, 3.0),
        oval(-1.90, 0.30, 0.26, 0.0, 0.92, kCowling, 2.4),
    };
    return loft({1.35, 0.0, 1.06}, kCowling, ovalSections(smoothed(ovals, 3), 20), {-2.30, 0.0, 0.82});
}

Mesh leftHalf() {
    const std::vector<Oval> exhaust = {
        oval(-0.30, 0.17, 0.17, 0.50, 1.20, kPipe),    oval(-1.40, 0.19, 0.19, 0.58, 1.22, kPipe),
        oval(-1.80, 0.17, 0.17, 0.62, 1.24, kExhaust), oval(-1.79, 0.14, 0.14, 0.62, 1.24, kExhaust),
        oval(-1.40, 0.14, 0.14, 0.58, 1.22, kExhaust),
    };
    Mesh half = loft({-0.20, 0.50, 1.20}, kPipe, ovalSections(exhaust, 16), {-1.40, 0.58, 1.22});
    const std::vector<Oval> skid = {
        oval(2.60, 0.04, 0.04, 1.15, -1.55, kTube),
        oval(2.20, 0.05, 0.05, 1.15, -1.70, kTube),
        oval(0.00, 0.05, 0.05, 1.15, -1.72, kTube),
        oval(-1.60, 0.05, 0.05, 1.15, -1.70, kTube),
    };
    append(half, loft({2.68, 1.15, -1.50}, kTube, ovalSections(smoothed(skid, 2), 8), {-1.70, 1.15, -1.70}));
    for (const double x : {1.60, -0.90})
        append(half, wing({{x, 0.60, -0.80}, 0.14, 0.5}, {{x, 1.15, -1.70}, 0.14, 0.5}, 2, 4, kLeft, kTube));
    append(half, wing({{-5.30, 0.10, 0.62}, 0.70, 0.10}, {{-5.50, 1.50, 0.62}, 0.50, 0.08}, 4, 6, kUp, kSkin));
    return half;
}

// Blades that lead with their front edge when they turn right-handed about the axis.
Mesh mainRotor() {
    const std::vector<Oval> head = {
        oval(0.30, 0.10, 0.10, 0.0, 1.95, kHead), oval(0.15, 0.28, 0.22, 0.0, 1.90, kHead),
        oval(-0.15, 0.28, 0.22, 0.0, 1.90, kHead), oval(-0.30, 0.10, 0.10, 0.0, 1.95, kHead)};
    Mesh rotor = loft({0.34, 0.0, 1.95}, kHead, ovalSections(smoothed(head, 2), 12), {-0.34, 0.0, 1.95});
    const Mesh blade = wing({{0.12, -0.20, 1.95}, 0.40, 0.12}, {{0.12, -6.50, 2.05}, 0.40, 0.08}, 10, 6, kUp, kBlade);
    for (int i = 0; i < 4; ++i)
        append(rotor, turned(blade, kMainHub, kUp, 90.0 * i + 20.0));
    return rotor;
}

Mesh tailRotor() {
    const Vec3d& hub = kTailHub;
    Mesh rotor;
    const Mesh blade = wing(
        {{hub.x + 0.06, hub.y, hub.z + 0.05}, 0.18, 0.12}, {{hub.x + 0.06, hub.y, hub.z + 1.10}, 0.18, 0.10}, 4, 4,
        kLeft, kBlade);
    for (int i = 0; i < 3; ++i)
        append(rotor, turned(blade, hub, kLeft, 120.0 * i));
    return rotor;
}

void addRotor(Body& body, const Mesh& rotor, const Vec3d& hub, const Vec3d& axis, double rate) {
    body.spinningParts.push_back({body.mesh.facets.size(), rotor.facets.size(), hub, axis, rate});
    append(body.mesh, rotor);
}
} // namespace

Body helicopter() {
    Body body;
    body.stagnationHeating = 3.0;
    append(body.mesh, fuselage());
    append(body.mesh, canopy());
    append(body.mesh, cowling());
    append(body.mesh, wing({{-5.90, 0.0, 0.65}, 1.10, 0.12}, {{-7.00, 0.0, 2.20}, 0.70, 0.10}, 5, 8, kLeft, kSkin));
    // The shaft of the tail rotor.
    append(body.mesh, wing({{-6.97, 0.0, 1.40}, 0.16, 0.6}, {{-6.99, 0.46, 1.40}, 0.12, 0.6}, 1, 4, kUp, kHead));
    const Mesh left = leftHalf();
    append(body.mesh, left);
    append(body.mesh, mirrored(left));
    addRotor(body, mainRotor(), kMainHub, kUp, 4.9);
    addRotor(body, tailRotor(), kTailHub, kLeft, 21.0);
    return body;
}
} // namespace sorvane
