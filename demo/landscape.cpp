// The demonstration's country.
#include "landscape.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace {
constexpr double kFullTurn = 2.0 * std::numbers::pi;

// A number from 0 to 1 that belongs to a cell and looks like chance.
double hashed(std::int64_t column, std::int64_t row, std::uint32_t salt) {
    std::uint32_t bits = static_cast<std::uint32_t>(column) * 0x9e3779b1U ^
                         static_cast<std::uint32_t>(row) * 0x85ebca77U ^ salt * 0xc2b2ae3dU;
    bits = (bits ^ bits >> 15) * 0x2c1b3c6dU;
    bits = (bits ^ bits >> 12) * 0x297a2d39U;
    return static_cast<double>(bits ^ bits >> 15) / 4294967295.0;
}

double smooth(double fraction) {
    const double clamped = std::clamp(fraction, 0.0, 1.0);
    return clamped * clamped * (3.0 - 2.0 * clamped);
}

double bell(double distance, double width) {
    return std::exp(-(distance / width) * (distance / width));
}

// Smooth noise from 0 to 1 with features of one size.
double noise(double x, double y, double size, std::uint32_t salt) {
    const double column = std::floor(x / size);
    const double row = std::floor(y / size);
    const double u = smooth(x / size - column);
    const double v = smooth(y / size - row);
    const auto c = static_cast<std::int64_t>(column);
    const auto r = static_cast<std::int64_t>(row);
    const double south = std::lerp(hashed(c, r, salt), hashed(c + 1, r, salt), u);
    const double north = std::lerp(hashed(c, r + 1, salt), hashed(c + 1, r + 1, salt), u);
    return std::lerp(south, north, v);
}

// The same with finer and finer features.
double fractal(double x, double y, double size, std::uint32_t salt) {
    double sum = 0.0;
    double weight = 0.5;
    for (std::uint32_t octave = 0; octave < 4; ++octave, weight *= 0.5, size *= 0.47)
        sum += weight * noise(x, y, size, salt + octave);
    return sum / 0.9375;
}

double riverX(double y) {
    return 2250.0 + 420.0 * std::sin(kFullTurn * y / 4200.0 + 0.4) + 120.0 * std::sin(kFullTurn * y / 1450.0 + 1.0);
}
// Nearly the distance: less where the river runs askew.
double riverDistance(double x, double y) {
    const double slope = (riverX(y + 5.0) - riverX(y - 5.0)) / 10.0;
    return std::abs(x - riverX(y)) / std::hypot(1.0, slope);
}

double valleyRoadX(double y) {
    return 3000.0 + 380.0 * std::sin(kFullTurn * y / 4200.0 + 0.2);
}
double crossRoadY(double x) {
    return 2300.0 + 160.0 * std::sin(kFullTurn * x / 3600.0);
}

// Of the tops, 1, over the valley floor, 0.
double relief(double x, double y) {
    // Wider and narrower by turns, which makes spurs and hollows.
    const double spurs = 0.45 + 1.1 * fractal(x, y, 640.0, 91);
    const double crestX = 560.0 + 40.0 * std::cos(kFullTurn * (y - 600.0) / 6000.0);
    const double crest = 1.0 - 0.16 * (1.0 - std::cos(kFullTurn * (y - 600.0) / 3000.0));
    const double ridge = crest * bell(x - crestX, (x < crestX ? 800.0 : 620.0) * spurs);
    const double hill = bell(std::hypot((x - 3900.0) / 1.15, y - 4300.0), 680.0 * spurs);
    const double fromRange = ((x - 5000.0) * 3500.0 - y * 1500.0) / std::hypot(3500.0, 1500.0);
    const double range =
        (0.4 + 0.55 * noise(x, y, 900.0, 11)) * bell(fromRange, (fromRange < 0.0 ? 620.0 : 1000.0) * spurs);
    const double rolling = 0.2 * fractal(x, y, 900.0, 21);
    const double raised = 1.0 - (1.0 - ridge) * (1.0 - hill) * (1.0 - range) * (1.0 - rolling);
    // Gullies on the slopes, none on the tops and on the floor.
    const double gully = std::max(0.0, 1.0 - 4.0 * std::abs(fractal(x, y, 480.0, 31) - 0.5));
    const double carved = raised - 0.9 * raised * raised * (1.0 - raised) * gully;
    return carved * (1.0 - bell(riverDistance(x, y), 620.0));
}

// The fields lie askew; the number of a field is that of its column and row.
struct Field {
    std::int64_t column;
    std::int64_t row;
};
Field fieldAt(double x, double y) {
    const double along = 0.966 * x + 0.259 * y;
    const double across = 0.966 * y - 0.259 * x;
    const double row = std::floor(across / 260.0);
    return {static_cast<std::int64_t>(std::floor(along / 380.0 + 0.37 * row)), static_cast<std::int64_t>(row)};
}

GroundClass cropAt(double x, double y) {
    const Field field = fieldAt(x, y);
    const double kind = hashed(field.column, field.row, 41);
    if (kind < 0.38)
        return GroundClass::Wheat;
    return kind < 0.68 ? GroundClass::Soil : GroundClass::Meadow;
}

// Houses around the place where the roads meet.
bool isRoof(double x, double y) {
    const double distance = std::hypot(x - valleyRoadX(2250.0), y - 2250.0);
    const auto column = static_cast<std::int64_t>(std::floor(x / 45.0));
    const auto row = static_cast<std::int64_t>(std::floor(y / 45.0));
    return hashed(column, row, 51) < 0.62 * (1.0 - distance / 420.0);
}
} // namespace

double Landscape::elevation(double x, double y) const {
    return reliefMetres_ * relief(x, y);
}

GroundClass Landscape::groundClass(double x, double y, const Triple& normal, double cellMetres) const {
    const double halfRoad = std::max(9.0, 0.55 * cellMetres);
    const double fromCrossRoad = std::abs(y - crossRoadY(x));
    if (fromCrossRoad < halfRoad && x > 1250.0)
        return GroundClass::Asphalt; // over the river there is a bridge
    if (riverDistance(x, y) < std::max(42.0, 0.7 * cellMetres))
        return GroundClass::Water;
    if (std::abs(x - valleyRoadX(y)) < halfRoad)
        return GroundClass::Asphalt;
    if (isRoof(x, y))
        return GroundClass::Roof;
    const double height = relief(x, y);
    const double patch = fractal(x, y, 420.0, 61);
    if (normal.z < 0.9 - 0.08 * patch || (height > 0.9 && patch > 0.5))
        return GroundClass::Rock;
    if (height > 0.17 && patch > 0.6 - 0.22 * smooth((height - 0.17) / 0.3) * smooth((0.95 - height) / 0.2))
        return GroundClass::Forest;
    const double fromRiver = riverDistance(x, y);
    if (height < 0.3 && fromRiver > 90.0 + 60.0 * patch && normal.z > 0.975)
        return cropAt(x, y);
    return fromRiver < 130.0 && patch > 0.55 ? GroundClass::Forest : GroundClass::Meadow;
}

double
Landscape::radiance(double x, double y, GroundClass ground, const Triple& normal, const Triple& towardsSun) const {
    const double sunlight = std::max(0.0, dot(normal, towardsSun)) - towardsSun.z;
    const double heated = ground == GroundClass::Water ? 1.0 : 1.0 + 1.5 * sunlight;
    const Field field = fieldAt(x, y);
    const bool isField = ground == GroundClass::Wheat || ground == GroundClass::Soil;
    const double ownField = isField ? 0.88 + 0.24 * hashed(field.column, field.row, 71) : 1.0;
    const double grain = ground == GroundClass::Water ? 1.0 : 0.9 + 0.2 * fractal(x, y, 90.0, 81);
    return coverOf(ground).radiance * std::max(0.3, heated) * ownField * grain;
}
