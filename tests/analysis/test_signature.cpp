// Signatures of bodies that can be worked out by hand.
#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "rows.h"
#include "signaturebodies.h"
#include "signaturecomparison.h"
#include "signaturemap.h"

namespace sorvane {
namespace {
constexpr float kRadiance = 2e-3F; // W/cm²/sr, 20 W/m²/sr
constexpr double kPerSquareMetre = 20.0;
constexpr double kDegree = std::numbers::pi / 180.0;

class SignatureTest : public testing::Test {
protected:
    SignatureBody load(const PlainFacets& facets, const std::string& surface = kBlackSurface) {
        SignatureBody body; // of another name each time, since reflectances are kept by name
        EXPECT_TRUE(body.load(writeBody(folder_, "body" + std::to_string(++loaded_), facets, surface)));
        return body;
    }
    static SignaturePoint
    towards(const SignatureBody& body, double azimuth, double elevation, const SignatureLight& light = {}) {
        return towards(body, Viewpoint{directionOf(azimuth, elevation)}, light);
    }
    static SignaturePoint
    towards(const SignatureBody& body, const Viewpoint& viewpoint, const SignatureLight& light = {}) {
        const FacetShading shading(body, light);
        return SignatureSum(body, shading, 1.0, FacetVisibility::kUsualPixels).towards(viewpoint);
    }

    TemporaryDirectory folder_;

private:
    int loaded_ = 0;
};

TEST_F(SignatureTest, APlateRadiatesByTheCosine) {
    PlainFacets facets;
    addForwardPlate(facets, {5.0, 1.0, 2.0}, 3.0, 2.0, kRadiance);
    const SignatureBody plate = load(facets);
    for (const double azimuth : {0.0, 10.0, 60.0, 89.0, 300.0})
        for (const double elevation : {0.0, -30.0, 80.0}) {
            const double cosine = std::cos(azimuth * kDegree) * std::cos(elevation * kDegree);
            const SignaturePoint point = towards(plate, azimuth, elevation);
            EXPECT_NEAR(point.projectedArea, 6.0 * cosine, 1e-6) << azimuth << ' ' << elevation;
            EXPECT_NEAR(point.intensity.total(), kPerSquareMetre * 6.0 * cosine, 1e-4) << azimuth << ' ' << elevation;
        }
    for (const double azimuth : {90.0, 120.0, 180.0, 270.0})
        EXPECT_EQ(towards(plate, azimuth, 0.0).intensity.total(), 0.0) << azimuth;
}

// The direction of every side, each told by its own radiance.
TEST_F(SignatureTest, AzimuthRunsFromTheNoseToTheRightAndElevationUpwards) {
    const SignatureBody box = load(boxFacets({1.0, 1.0, 1.0}, {1e-4F, 2e-4F, 3e-4F, 4e-4F, 5e-4F, 6e-4F}));
    const struct {
        double azimuth;
        double elevation;
        double intensity;
    } rows[] = {{0, 0, 1}, {90, 0, 2}, {180, 0, 3}, {270, 0, 4}, {0, 90, 5}, {77, 90, 5}, {0, -90, 6}};
    for (const auto& [azimuth, elevation, intensity] : rows)
        EXPECT_NEAR(towards(box, azimuth, elevation).intensity.total(), intensity, 1e-5) << azimuth << ' ' << elevation;
    const SignaturePoint between = towards(box, 30.0, 0.0);
    EXPECT_NEAR(between.intensity.total(), 1.0 * std::cos(30.0 * kDegree) + 2.0 * std::sin(30.0 * kDegree), 1e-5);
}

TEST_F(SignatureTest, ABoxShowsThreeSides) {
    const Vec3d size{4.0, 3.0, 2.0};
    const SignatureBody box = load(boxFacets(size, {kRadiance, kRadiance, kRadiance, kRadiance, kRadiance, kRadiance}));
    const SignatureMap map = signatureOf(box, {}, SignatureGrid(15.0), 1.0);
    for (std::size_t row = 0; row < map.grid.elevationCount(); ++row)
        for (std::size_t i = 0; i < map.grid.azimuthCount(); ++i) {
            const Vec3d d = directionOf(map.grid.azimuth(i), map.grid.elevation(row));
            const double area =
                size.y * size.z * std::abs(d.x) + size.x * size.z * std::abs(d.y) + size.x * size.y * std::abs(d.z);
            EXPECT_NEAR(map.at(row, i).projectedArea, area, 1e-5 * area) << row << ' ' << i;
            EXPECT_NEAR(map.at(row, i).intensity.own, kPerSquareMetre * area, 1e-5 * kPerSquareMetre * area);
        }
}

// Of a convex body the mean projected area is a quarter of the surface (Cauchy).
TEST_F(SignatureTest, ASphereOfFacetsRadiatesAlikeAllAround) {
    const double radius = 2.0;
    const PlainFacets facets = sphereFacets(radius, 40, 80, kRadiance);
    double surface = 0.0;
    for (const PlainFacet& facet : facets) {
        const auto& [a, b, c] = facet.corners;
        surface += 0.5 * length(cross(b - a, c - a));
    }
    const double disc = std::numbers::pi * radius * radius;
    const SignatureMap map = signatureOf(load(facets), {}, SignatureGrid(15.0), 1.0);
    const double tessellation = 1.0 - surface / (4.0 * disc);
    ASSERT_LT(tessellation, 0.01);
    for (const SignaturePoint& point : map.points) {
        EXPECT_LT(point.projectedArea, disc * (1.0 + 1e-5));
        EXPECT_GT(point.projectedArea, disc * (1.0 - 2.0 * tessellation));
        EXPECT_NEAR(point.intensity.total(), kPerSquareMetre * point.projectedArea, 1e-4 * kPerSquareMetre * disc);
    }
    EXPECT_NEAR(map.mean().projectedArea, surface / 4.0, 2e-4 * disc);
}

// A plate of 1 x 2 a metre before the right half of one of 2 x 2.
TEST_F(SignatureTest, WhatLiesInFrontHidesWhatLiesBehind) {
    PlainFacets facets;
    addForwardPlate(facets, {0.0, 0.0, 0.0}, 2.0, 2.0, 3e-4F);
    addForwardPlate(facets, {1.0, -0.5, 0.0}, 1.0, 2.0, 1e-4F);
    for (const bool isReversed : {false, true}) {
        if (isReversed)
            std::ranges::reverse(facets);
        const SignatureBody body = load(facets);
        const double slant = std::cos(45.0 * kDegree);
        const struct {
            double azimuth;
            double area;      // m²
            double intensity; // W/sr
        } rows[] = {
            {0.0, 4.0, 2.0 * 1.0 + 2.0 * 3.0},
            {45.0, 4.0 * slant, (2.0 * 1.0 + 2.0 * 3.0) * slant},  // hides the left half
            {315.0, 6.0 * slant, (2.0 * 1.0 + 4.0 * 3.0) * slant}, // hides nothing
            {180.0, 0.0, 0.0},
        };
        for (const auto& [azimuth, area, intensity] : rows) {
            const SignaturePoint point = towards(body, azimuth, 0.0);
            EXPECT_NEAR(point.projectedArea, area, 0.005 * area) << azimuth;
            EXPECT_NEAR(point.intensity.total(), intensity, 0.005 * intensity) << azimuth;
        }
    }
}

// A small plate a metre before the origin: towards an eye 5 m away it has the area A cosθ (5 / r)².
TEST_F(SignatureTest, FromNearAPlateCountsByItsOwnDistance) {
    PlainFacets facets;
    addForwardPlate(facets, {1.0, 0.0, 0.0}, 0.2, 0.2, kRadiance);
    const SignatureBody plate = load(facets);
    const struct {
        double azimuth;
        double cosine;
        double distance;
    } rows[] = {{0, 1, 4}, {60, 1.5 / std::sqrt(21.0), std::sqrt(21.0)}, {80, 0, 1}};
    for (const auto& [azimuth, cosine, distance] : rows) {
        const SignaturePoint near = towards(plate, Viewpoint{directionOf(azimuth, 0.0), 5.0});
        const double area = 0.04 * cosine * 25.0 / (distance * distance);
        EXPECT_NEAR(near.projectedArea, area, 1e-3 * area) << azimuth;
        EXPECT_NEAR(near.intensity.total(), kPerSquareMetre * area, 1e-3 * kPerSquareMetre * area) << azimuth;
    }
    EXPECT_GT(towards(plate, 80.0, 0.0).intensity.total(), 0.0) << "its front, seen from far away";
    PlainFacets wall;
    addRectangle(wall, {0.0, -1.0, -1.0}, {0.0, -1.0, 1.0}, {10.0, -1.0, 1.0}, {10.0, -1.0, -1.0}, kRadiance);
    EXPECT_EQ(towards(load(wall), Viewpoint{directionOf(0.0, 0.0), 5.0}).projectedArea, 0.0) << "reaches behind";
    EXPECT_NEAR(plate.radius(), std::sqrt(1.02), 1e-6);
}

// Half-way to the eye a plate hides four times its area; its corners lie on the lines to those of what it hides.
TEST_F(SignatureTest, FromNearWhatLiesInFrontHidesMore) {
    PlainFacets facets;
    addForwardPlate(facets, {0.0, 0.0, 0.0}, 10.0, 10.0, kRadiance);
    const SignatureBody alone = load(facets);
    addForwardPlate(facets, {25.0, 0.0, 0.0}, 3.0, 3.0, 0.0F);
    const SignatureBody both = load(facets);
    for (const auto& [range, seen] : Rows<double, double>{{50.0, 0.64}, {Viewpoint().range, 0.91}}) {
        const Viewpoint ahead{directionOf(0.0, 0.0), range};
        const double share = towards(both, ahead).intensity.total() / towards(alone, ahead).intensity.total();
        EXPECT_NEAR(share, seen, 0.005) << range;
    }
}

// Facets between the pixels' middles are seen or hidden like the others.
TEST_F(SignatureTest, FacetsSmallerThanAPixelCount) {
    PlainFacets facets;
    constexpr int kSide = 60;
    for (int i = 0; i < kSide * kSide; ++i)
        addForwardPlate(
            facets, {0.0, (i % kSide + 0.5) / kSide, (i / kSide + 0.5) / kSide}, 1.0 / kSide, 1.0 / kSide, kRadiance);
    PlainFacets hidden = facets;
    addForwardPlate(hidden, {1.0, 0.25, 0.5}, 0.5, 1.0, 0.0F);
    const auto seen = [this](const PlainFacets& of) {
        const SignatureBody body = load(of);
        const FacetShading shading(body, {});
        return SignatureSum(body, shading, 1.0, 32).towards({directionOf(0.0, 0.0)}).intensity.total();
    };
    EXPECT_NEAR(seen(facets), kPerSquareMetre, 1e-4);
    EXPECT_NEAR(seen(hidden), 0.5 * kPerSquareMetre, 0.03 * kPerSquareMetre);
}

// A diffuse surface reflects the share rho of the sun's beam by the cosine, and of sky and earth, of which it has form
// factors of 1 each, what it doesn't emit.
TEST_F(SignatureTest, IsSplitByWhereItComesFrom) {
    PlainFacets facets;
    addForwardPlate(facets, {}, 1.0, 1.0, kRadiance);
    const SignatureBody plate = load(facets, "0.3 0.6 0.0 0.3 2 diffuse");
    const SignatureLight light{4e-4F, 1e-4F, 8e-4F, directionOf(60.0, 0.0)};
    const SignaturePoint point = towards(plate, 340.0, 0.0, light);
    const double area = 1e4 * std::cos(20.0 * kDegree); // cm²
    EXPECT_NEAR(point.intensity.own, 2e-3 * area, 1e-5);
    EXPECT_NEAR(point.intensity.sun, 0.3 * 8e-4 * std::cos(60.0 * kDegree) * area, 1e-5);
    EXPECT_NEAR(point.intensity.skyAndEarth, 0.4 * 5e-4 * area, 1e-5);
    EXPECT_EQ(point.intensity.otherFacets, 0.0);
    EXPECT_NEAR(
        point.intensity.total(), point.intensity.own + point.intensity.sun + point.intensity.skyAndEarth, 1e-12);
    const SignatureLight fromBehind{0.0F, 0.0F, 8e-4F, directionOf(180.0, 0.0)};
    EXPECT_EQ(towards(plate, 0.0, 0.0, fromBehind).intensity.sun, 0.0);
}

// A floor that faces upwards sees a wall with a form factor of 0.25: it reflects the share rho of a quarter.
TEST_F(SignatureTest, FacetsReflectEachOther) {
    PlainFacets facets;
    facets.push_back({{Vec3d{0, 0, 0}, Vec3d{1, 0, 0}, Vec3d{0, 1, 0}}, 0.0F});
    facets.push_back({{Vec3d{0, 0, 0}, Vec3d{0, 1, 0}, Vec3d{0, 0, 1}}, kRadiance});
    const SignatureFiles files = writeBody(folder_, "corner", facets, "0.3 0.6 0.0 0.3 2 diffuse");
    folder_.write("corner.sff-txt", "2\n1 0.5 0.25 1\n2 0.25\n2 0.5 0.25 1\n1 0.25\n");
    SignatureBody body;
    ASSERT_TRUE(body.load(files));
    const SignatureLight light{4e-4F, 2e-4F, 0.0F, {}};
    const SignaturePoint above = towards(body, 0.0, 90.0, light);
    EXPECT_NEAR(above.intensity.otherFacets, 0.3 * 0.25 * 2e-3 * 0.5e4, 1e-5);
    EXPECT_NEAR(above.intensity.skyAndEarth, 0.4 * (0.5 * 4e-4 + 0.25 * 2e-4) * 0.5e4, 1e-5);
}

TEST_F(SignatureTest, RotorsTurnFacetsAndNormals) {
    PlainFacets facets;
    addForwardPlate(facets, {2.0, 0.0, 0.0}, 1.0, 1.0, kRadiance);
    SignatureFiles files = writeBody(folder_, "rotor", facets, "0.3 0.6 0.0 0.3 2 diffuse");
    files.rotors = folder_.write("rotors", "1 2  0 0 0  0 0 1  0.25\n"); // from x towards y, to the left, in a second
    SignatureBody body;
    ASSERT_TRUE(body.load(files));
    const SignatureLight light{0.0F, 0.0F, 8e-4F, directionOf(270.0, 0.0)};
    const auto sunAt = [&](float seconds, double azimuth) {
        body.turnRotors(seconds);
        return towards(body, azimuth, 0.0, light).intensity;
    };
    EXPECT_NEAR(sunAt(0.0F, 0.0).own, kPerSquareMetre, 1e-4);
    EXPECT_NEAR(sunAt(1.0F, 270.0).own, kPerSquareMetre, 1e-4);
    EXPECT_NEAR(sunAt(1.0F, 270.0).sun, 0.3 * 8e-4 * 1e4, 1e-4);
    EXPECT_NEAR(sunAt(1.0F, 0.0).own, 0.0, 1e-4);
    EXPECT_NEAR(sunAt(4.0F, 0.0).own, kPerSquareMetre, 1e-4);
}

TEST_F(SignatureTest, FacetsThatAreNowhereAreLeftOut) {
    PlainFacets facets;
    addForwardPlate(facets, {}, 1.0, 1.0, kRadiance);
    facets.push_back({{Vec3d{std::nan(""), 0, 0}, Vec3d{0, 1, 0}, Vec3d{0, 0, 1}}, kRadiance});
    facets.push_back({{Vec3d{}, Vec3d{}, Vec3d{}}, kRadiance});
    EXPECT_NEAR(towards(load(facets), 0.0, 0.0).intensity.total(), kPerSquareMetre, 1e-4);
}

TEST_F(SignatureTest, LengthsCountSquaredAndThreadsNothing) {
    const SignatureBody box = load(boxFacets({4.0, 3.0, 2.0}, {1e-4F, 2e-4F, 3e-4F, 4e-4F, 5e-4F, 6e-4F}));
    const SignatureGrid grid(30.0);
    const SignatureMap metres = signatureOf(box, {}, grid, 1.0, {.threads = 1});
    const SignatureMap feet = signatureOf(box, {}, grid, 0.3048, {.threads = 3});
    for (std::size_t i = 0; i < grid.size(); ++i)
        EXPECT_NEAR(feet.points[i].intensity.own, 0.09290304 * metres.points[i].intensity.own, 1e-9) << i;
    EXPECT_EQ(metres.brightest(), signatureOf(box, {}, grid, 1.0, {.threads = 2}).brightest());
    const SignatureWork ended{.progress = [](double) {
        return false;
    }};
    EXPECT_TRUE(signatureOf(box, {}, grid, 1.0, ended).points.empty());
}

TEST(SignatureGridTest, StepsMeetNoseWingsAndPoles) {
    const struct {
        double step;
        bool isStep;
    } rows[] = {{5, true},  {0.5, true},  {90, true}, {22.5, true}, {0.7, false},         {0.45, false},
                {4, false}, {180, false}, {0, false}, {-5, false},  {std::nan(""), false}};
    for (const auto& [step, isStep] : rows)
        EXPECT_EQ(SignatureGrid::isStep(step), isStep) << step;
    const SignatureGrid grid;
    EXPECT_EQ(grid.size(), 2664U);
    EXPECT_EQ(grid.elevation(grid.level()), 0.0);
    EXPECT_EQ(grid.elevation(grid.rowNearest(43.0)), 45.0);
    double sphere = 0.0;
    for (std::size_t row = 0; row < grid.elevationCount(); ++row)
        sphere += static_cast<double>(grid.azimuthCount()) * grid.solidAngle(row);
    EXPECT_NEAR(sphere, 4.0 * std::numbers::pi, 1e-12);
}

TEST(SignatureComparisonTest, IsInDecibels) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const struct {
        double a;
        double b;
        double decibels;
    } rows[] = {{1, 1, 0}, {0, 0, 0}, {1, 10, 10}, {2, 1, -3.0103}, {5, 0, -kInfinity}, {0, 1e-9, kInfinity},
                {-1, 0, 0}};
    for (const auto& [a, b, expected] : rows)
        EXPECT_TRUE(decibels(a, b) == expected || std::abs(decibels(a, b) - expected) < 1e-4) << a << ' ' << b;
}

// The level row of 45 degree steps stands for sin 22.5° of the sphere, the poles for far less of it.
TEST(SignatureComparisonTest, DirectionsCountByTheirSolidAngle) {
    const SignatureGrid grid(45.0);
    SignatureMap even{grid, std::vector<SignaturePoint>(grid.size())};
    for (SignaturePoint& point : even.points)
        point.intensity.own = 1.0;
    SignatureMap level = even;
    for (std::size_t column = 0; column < grid.azimuthCount(); ++column)
        level.points[grid.level() * grid.azimuthCount() + column].intensity.own = 10.0;
    EXPECT_NEAR(compareSignatures(even, level).rootMeanSquare.value(), 10.0 * std::sqrt(0.3826834324), 1e-6);
}

TEST_F(SignatureTest, TwoBodiesDifferWhereTheyDo) {
    const SignatureGrid grid(45.0);
    const auto mapOf = [&](const std::array<float, 6>& radiances) {
        return signatureOf(load(boxFacets({1.0, 1.0, 1.0}, radiances)), {}, grid, 1.0);
    };
    const SignatureMap a = mapOf({1e-4F, 1e-4F, 1e-4F, 1e-4F, 1e-4F, 0.0F});
    EXPECT_TRUE(compareSignatures(a, a).agrees(0.0));
    EXPECT_EQ(compareSignatures(a, a).rootMeanSquare, 0.0);
    const SignatureComparison right = compareSignatures(a, mapOf({1e-4F, 2e-4F, 1e-4F, 1e-4F, 1e-4F, 0.0F}));
    EXPECT_EQ(right.greatest, grid.level() * grid.azimuthCount() + 2);
    EXPECT_NEAR(right.greatestDifference(), 3.0103, 1e-3);
    EXPECT_FALSE(right.agrees(3.0));
    EXPECT_TRUE(right.agrees(3.1));
    EXPECT_GT(right.ofMeans, 0.0);
    EXPECT_LT(right.rootMeanSquare, 3.0103);
    const SignatureComparison below = compareSignatures(a, mapOf({1e-4F, 1e-4F, 1e-4F, 1e-4F, 1e-4F, 1e-6F}));
    EXPECT_EQ(below.onlyInB, grid.azimuthCount());
    EXPECT_EQ(below.onlyInA, 0U);
    EXPECT_FALSE(below.agrees(100.0));
}
} // namespace
} // namespace sorvane
