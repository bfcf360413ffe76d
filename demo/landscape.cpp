// The demonstration's country.
#include "landscape.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace sorvane {
namespace {
constexpr double kFullTurn = 2.0 * std::numbers::pi;

// The country's numbers, in metres where nothing else is said; x runs east, y north.
struct Place {
    double x;
    double y;
};
struct Wave {
    double amplitude;
    double length;
    double phase; // radians

    double at(double along) const { return amplitude * std::sin(kFullTurn * along / length + phase); }
};
// Smooth noise: the size of its largest features, and a number of its own.
struct Noise {
    double size;
    std::uint32_t salt;
};

constexpr struct {
    double middle = 2250.0;
    Wave bends{420.0, 4200.0, 0.4};
    Wave meanders{120.0, 1450.0, 1.0};
    double halfWidth = 42.0;
    double valley = 620.0; // about half of the floor's width
} kRiver;

constexpr struct {
    double valleyX = 3000.0;
    Wave valleyBends{380.0, 4200.0, 0.2};
    double crossY = 2300.0;
    Wave crossBends{160.0, 3600.0, 0.0};
    double crossWestEnd = 1250.0;
    double halfWidth = 9.0;
} kRoads;

// In the west, from south to north.
constexpr struct {
    double crestX = 560.0;
    double swing = 40.0; // of the crest about crestX
    double topY = 600.0; // every `topSpacing` there is a top
    double topSpacing = 3000.0;
    double dip = 0.16; // twice of it between the tops, of 1
    double westSlope = 800.0;
    double eastSlope = 620.0;
} kRidge;

constexpr struct {
    Place top{3900.0, 4300.0};
    double stretch = 1.15; // longer from west to east
    double slope = 680.0;
} kHill;

// In the south-east, along a line through `start`.
constexpr struct {
    Place start{5000.0, 0.0};
    Place run{1500.0, 3500.0};
    double lowest = 0.4; // of the crest, of 1, and what noise adds to it
    double added = 0.55;
    Noise crest{900.0, 11};
    double northWestSlope = 620.0;
    double southEastSlope = 1000.0;
} kRange;

// Hills and mountains around the square.
constexpr struct {
    double west = -100.0; // where they begin, all sides alike
    double east = 6600.0;
    double rise = 1500.0; // from there to where they are as high as they get
    Noise massifs{2600.0, 111};
    double lowest = 0.32; // of the noise, where the mountains begin to rise from the plains
    double steepness = 0.3;
    double height = 0.92; // of 1
} kUplands;

constexpr struct {
    Noise spurs{640.0, 91}; // make slopes wider and narrower by turns
    Noise rolling{900.0, 21};
    double rollingHeight = 0.2; // of 1
    Noise gullies{480.0, 31};
    double gullyDepth = 0.9;
} kSlopes;

constexpr struct {
    double cosine = 0.966; // of the angle by which they lie askew
    double sine = 0.259;
    double across = 260.0;
    double along = 380.0;
    double shift = 0.37; // from row to row, of a field's length
    std::uint32_t cropSalt = 41;
    std::uint32_t radianceSalt = 71;
    double wheat = 0.38; // of all fields
    double wheatOrSoil = 0.68;
} kFields;

// Around the place where the roads meet.
constexpr struct {
    double y = 2250.0;
    double radius = 420.0;
    double plot = 45.0;
    double built = 0.62; // of the plots in the middle
    std::uint32_t salt = 51;
} kVillage;

// Where what grows: heights are parts of the tops', slopes the z of the normal.
constexpr struct {
    Noise patches{420.0, 61};
    double rockSlope = 0.9;
    double rockHeight = 0.9;
    double forestLowest = 0.17;
    double fieldHighest = 0.3;
    double fieldSlope = 0.975;
    double fieldFromRiver = 90.0;
    double riverForest = 130.0;
} kCover;

constexpr struct {
    double sunlight = 1.5; // how much a slope's share of the sun changes, of 1
    double darkest = 0.3;
    Noise grain{90.0, 81};
} kRadiance;

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
double noise(double x, double y, const Noise& kind) {
    const auto [size, salt] = kind;
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
double fractal(double x, double y, Noise kind) {
    double sum = 0.0;
    double weight = 0.5;
    for (int octave = 0; octave < 4; ++octave, weight *= 0.5, kind.size *= 0.47, ++kind.salt)
        sum += weight * noise(x, y, kind);
    return sum / 0.9375;
}

double riverX(double y) {
    return kRiver.middle + kRiver.bends.at(y) + kRiver.meanders.at(y);
}
// Nearly the distance: less where the river runs askew.
double riverDistance(double x, double y) {
    const double slope = (riverX(y + 5.0) - riverX(y - 5.0)) / 10.0;
    return std::abs(x - riverX(y)) / std::hypot(1.0, slope);
}

double valleyRoadX(double y) {
    return kRoads.valleyX + kRoads.valleyBends.at(y);
}
double crossRoadY(double x) {
    return kRoads.crossY + kRoads.crossBends.at(x);
}

double uplands(double x, double y) {
    const auto outside = [](double along) {
        return std::max({kUplands.west - along, along - kUplands.east, 0.0});
    };
    const double fromSquare = std::hypot(outside(x), outside(y));
    return kUplands.height * smooth(fromSquare / kUplands.rise) *
           smooth((fractal(x, y, kUplands.massifs) - kUplands.lowest) / kUplands.steepness);
}

// Of the tops, 1, over the valley floor, 0.
double relief(double x, double y) {
    const double spurs = 0.45 + 1.1 * fractal(x, y, kSlopes.spurs);
    const double fromTop = kFullTurn * (y - kRidge.topY) / kRidge.topSpacing;
    const double crestX = kRidge.crestX + kRidge.swing * std::cos(fromTop / 2.0);
    const double crest = 1.0 - kRidge.dip * (1.0 - std::cos(fromTop));
    const double ridge = crest * bell(x - crestX, (x < crestX ? kRidge.westSlope : kRidge.eastSlope) * spurs);
    const double hill = bell(std::hypot((x - kHill.top.x) / kHill.stretch, y - kHill.top.y), kHill.slope * spurs);
    const double fromRange = ((x - kRange.start.x) * kRange.run.y - (y - kRange.start.y) * kRange.run.x) /
                             std::hypot(kRange.run.y, kRange.run.x);
    const double range = (kRange.lowest + kRange.added * noise(x, y, kRange.crest)) *
                         bell(fromRange, (fromRange < 0.0 ? kRange.northWestSlope : kRange.southEastSlope) * spurs);
    const double rolling = kSlopes.rollingHeight * fractal(x, y, kSlopes.rolling);
    const double raised = 1.0 - (1.0 - ridge) * (1.0 - hill) * (1.0 - range) * (1.0 - rolling) * (1.0 - uplands(x, y));
    // Gullies on the slopes, none on the tops and on the floor.
    const double gully = std::max(0.0, 1.0 - 4.0 * std::abs(fractal(x, y, kSlopes.gullies) - 0.5));
    const double carved = raised - kSlopes.gullyDepth * raised * raised * (1.0 - raised) * gully;
    return carved * (1.0 - bell(riverDistance(x, y), kRiver.valley));
}

// The fields lie askew; the number of a field is that of its column and row.
struct Field {
    std::int64_t column;
    std::int64_t row;
};
Field fieldAt(double x, double y) {
    const double along = kFields.cosine * x + kFields.sine * y;
    const double across = kFields.cosine * y - kFields.sine * x;
    const double row = std::floor(across / kFields.across);
    return {
        static_cast<std::int64_t>(std::floor(along / kFields.along + kFields.shift * row)),
        static_cast<std::int64_t>(row)};
}

GroundClass cropAt(double x, double y) {
    const Field field = fieldAt(x, y);
    const double kind = hashed(field.column, field.row, kFields.cropSalt);
    if (kind < kFields.wheat)
        return GroundClass::Wheat;
    return kind < kFields.wheatOrSoil ? GroundClass::Soil : GroundClass::Meadow;
}

bool isRoof(double x, double y) {
    const double distance = std::hypot(x - valleyRoadX(kVillage.y), y - kVillage.y);
    const auto column = static_cast<std::int64_t>(std::floor(x / kVillage.plot));
    const auto row = static_cast<std::int64_t>(std::floor(y / kVillage.plot));
    return hashed(column, row, kVillage.salt) < kVillage.built * (1.0 - distance / kVillage.radius);
}
} // namespace

double Landscape::elevation(double x, double y) const {
    return reliefMetres_ * relief(x, y);
}

GroundClass Landscape::groundClass(double x, double y, const Vec3d& normal, double cellMetres) const {
    const double halfRoad = std::max(kRoads.halfWidth, 0.55 * cellMetres);
    const double fromCrossRoad = std::abs(y - crossRoadY(x));
    if (fromCrossRoad < halfRoad && x > kRoads.crossWestEnd)
        return GroundClass::Asphalt; // over the river there is a bridge
    if (riverDistance(x, y) < std::max(kRiver.halfWidth, 0.7 * cellMetres))
        return GroundClass::Water;
    if (std::abs(x - valleyRoadX(y)) < halfRoad)
        return GroundClass::Asphalt;
    if (isRoof(x, y))
        return GroundClass::Roof;
    const double height = relief(x, y);
    const double patch = fractal(x, y, kCover.patches);
    if (normal.z < kCover.rockSlope - 0.08 * patch || (height > kCover.rockHeight && patch > 0.5))
        return GroundClass::Rock;
    // Most forest grows half-way up.
    const double aboveLowest = height - kCover.forestLowest;
    if (aboveLowest > 0.0 && patch > 0.6 - 0.22 * smooth(aboveLowest / 0.3) * smooth((0.95 - height) / 0.2))
        return GroundClass::Forest;
    const double fromRiver = riverDistance(x, y);
    if (height < kCover.fieldHighest && fromRiver > kCover.fieldFromRiver + 60.0 * patch &&
        normal.z > kCover.fieldSlope)
        return cropAt(x, y);
    return fromRiver < kCover.riverForest && patch > 0.55 ? GroundClass::Forest : GroundClass::Meadow;
}

double Landscape::radiance(double x, double y, GroundClass ground, const Vec3d& normal, const Vec3d& towardsSun) const {
    const double sunlight = std::max(0.0, dot(normal, towardsSun)) - towardsSun.z;
    const double heated = ground == GroundClass::Water ? 1.0 : 1.0 + kRadiance.sunlight * sunlight;
    const Field field = fieldAt(x, y);
    const bool isField = ground == GroundClass::Wheat || ground == GroundClass::Soil;
    const double ownField = isField ? 0.88 + 0.24 * hashed(field.column, field.row, kFields.radianceSalt) : 1.0;
    const double grain = ground == GroundClass::Water ? 1.0 : 0.9 + 0.2 * fractal(x, y, kRadiance.grain);
    return coverOf(ground).radiance * std::max(kRadiance.darkest, heated) * ownField * grain;
}
} // namespace sorvane
