// The stock target: a jet with two engines, 18.4 metres long.
#include "body.h"
#include "loft.h"

namespace sorvane {
namespace {
constexpr Part kSkin = {Material::Paint, 277.0};
constexpr Part kCanopy = {Material::Canopy, 275.0};
constexpr Part kRadome = {Material::Radome, 281.0};
constexpr Part kIntake = {Material::Duct, 278.0};
constexpr Part kEngineBay = {Material::Paint, 291.0};
constexpr Part kTailPipe = {Material::Metal, 294.0};
constexpr Part kPetals = {Material::Nozzle, 305.0};
constexpr Part kCavity = {Material::Nozzle, 338.0};
constexpr Vec3d kUp = {0.0, 0.0, 1.0};

Mesh fuselage() {
    const auto at = [](double x, double halfWidth, double halfHeight, double z, Part part) {
        return Oval{x, halfWidth, halfHeight, {0.0, 0.0, z}, 2.0, part};
    };
    const std::vector<Oval> ovals = {
        at(9.40, 0.09, 0.09, -0.15, kRadome), at(8.40, 0.34, 0.33, -0.12, kRadome), at(7.20, 0.56, 0.56, -0.06, kSkin),
        at(6.00, 0.74, 0.72, 0.00, kSkin),    at(4.50, 0.88, 0.86, 0.06, kSkin),    at(3.00, 1.00, 0.90, 0.10, kSkin),
        at(1.00, 1.15, 0.84, 0.12, kSkin),    at(-1.00, 1.20, 0.75, 0.10, kSkin),   at(-3.00, 1.10, 0.62, 0.08, kSkin),
        at(-5.00, 0.80, 0.46, 0.06, kSkin),   at(-6.80, 0.32, 0.20, 0.05, kSkin),
    };
    return loft({9.60, 0.0, -0.15}, kRadome, ovalSections(smoothed(ovals, 3), 28), {-7.60, 0.0, 0.05});
}

Mesh canopy() {
    const auto at = [](double x, double halfWidth, double halfHeight, double z) {
        return Oval{x, halfWidth, halfHeight, {0.0, 0.0, z}, 2.0, kCanopy};
    };
    const std::vector<Oval> ovals = {
        at(6.50, 0.14, 0.12, 0.56), at(5.70, 0.38, 0.40, 0.66), at(4.90, 0.47, 0.55, 0.74),
        at(4.00, 0.46, 0.52, 0.78), at(3.00, 0.36, 0.36, 0.78), at(2.20, 0.16, 0.14, 0.78),
    };
    return loft({6.70, 0.0, 0.52}, kCanopy, ovalSections(smoothed(ovals, 3), 16), {1.90, 0.0, 0.76});
}

// From the fan in the intake forwards to the lip, back along the outside to the nozzle, and forwards again into it.
Mesh leftEngine() {
    constexpr Vec3d kAxis = {0.0, 1.05, -0.28};
    const auto at = [&](double x, double halfWidth, double halfHeight, double squareness, Part part) {
        return Oval{x, halfWidth, halfHeight, kAxis, squareness, part};
    };
    std::vector<Oval> ovals = {
        at(0.80, 0.44, 0.54, 4.0, kIntake), at(1.60, 0.46, 0.58, 4.0, kIntake), at(2.40, 0.49, 0.63, 4.0, kSkin)};
    const std::vector<Oval> outside = smoothed(
        {at(2.45, 0.52, 0.66, 4.0, kSkin), at(1.20, 0.60, 0.70, 3.6, kSkin), at(-1.00, 0.66, 0.70, 3.0, kSkin),
         at(-3.20, 0.68, 0.68, 2.5, kEngineBay), at(-5.40, 0.68, 0.68, 2.1, kTailPipe),
         at(-7.20, 0.66, 0.66, 2.0, kPetals)},
        4);
    ovals.insert(ovals.end(), outside.begin(), outside.end());
    ovals.push_back(at(-8.00, 0.60, 0.60, 2.0, kPetals));
    ovals.push_back(at(-8.80, 0.50, 0.50, 2.0, kPetals));
    ovals.push_back(at(-8.78, 0.47, 0.47, 2.0, kCavity));
    ovals.push_back(at(-8.10, 0.50, 0.50, 2.0, kCavity));
    ovals.push_back(at(-7.30, 0.52, 0.52, 2.0, kCavity));
    return loft(kAxis + Vec3d{1.0, 0.0, 0.0}, kIntake, ovalSections(ovals, 24), kAxis + Vec3d{-7.50, 0.0, 0.0});
}

Mesh leftHalf() {
    Mesh half = leftEngine();
    append(half, wing({{1.75, 1.56, -0.05}, 5.40, 0.05}, {{-2.60, 6.60, -0.20}, 1.50, 0.04}, 8, 12, kUp, kSkin));
    append(half, wing({{-4.40, 1.62, -0.15}, 3.00, 0.05}, {{-7.20, 4.10, -0.25}, 1.20, 0.04}, 5, 10, kUp, kSkin));
    const Vec3d across = unit(Vec3d{0.0, 2.75, -0.60});
    append(half, wing({{-4.20, 1.35, 0.29}, 3.20, 0.06}, {{-6.90, 1.95, 3.00}, 1.20, 0.05}, 5, 10, across, kSkin));
    return half;
}
} // namespace

Body jet() {
    Body body;
    body.stagnationHeating = 26.0;
    append(body.mesh, fuselage());
    append(body.mesh, canopy());
    const Mesh left = leftHalf();
    append(body.mesh, left);
    append(body.mesh, mirrored(left));
    return body;
}
} // namespace sorvane
