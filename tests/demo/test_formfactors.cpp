// Form factors by ray casting: known configurations.
#include <array>
#include <cmath>
#include <map>
#include <numeric>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "body.h"
#include "formfactors.h"
#include "rows.h"

using namespace sorvane;

namespace {
// A box around the origin, each side of two facets: the facets 2i and 2i + 1 make up side i, and the sides 2i and
// 2i + 1 face each other along axis i. Seen from inside unless `facesOutwards`.
Mesh box(const Vec3d& size, bool facesOutwards) {
    Mesh mesh;
    for (const double x : {-0.5, 0.5})
        for (const double y : {-0.5, 0.5})
            for (const double z : {-0.5, 0.5})
                mesh.points.push_back({x * size.x, y * size.y, z * size.z});
    constexpr std::array<std::array<std::size_t, 4>, 6> kSides = {
        {{0, 1, 3, 2}, {4, 6, 7, 5}, {0, 4, 5, 1}, {2, 3, 7, 6}, {0, 2, 6, 4}, {1, 5, 7, 3}}};
    for (const auto& side : kSides)
        for (const std::array<std::size_t, 3>& corners :
             {std::array{side[0], side[1], side[2]}, std::array{side[0], side[2], side[3]}})
            mesh.facets.push_back({corners, {}});
    if (!facesOutwards)
        for (MeshFacet& facet : mesh.facets)
            std::swap(facet.corners[1], facet.corners[2]);
    return mesh;
}

double sum(const FormFactors& factors) {
    return std::accumulate(
        factors.visible.begin(), factors.visible.end(), factors.earth + factors.sky,
        [](double total, const FormFactors::Visible& visible) { return total + visible.factor; });
}

// From one side of a box to another.
double betweenSides(const std::vector<FormFactors>& factors, std::size_t from, std::size_t to) {
    double total = 0.0;
    for (const std::size_t facet : {2 * from, 2 * from + 1})
        for (const FormFactors::Visible& visible : factors[facet].visible)
            if (visible.facet / 2 == to)
                total += 0.5 * visible.factor;
    return total;
}
} // namespace

TEST(FormFactors, OfAClosedBoxSumToOneAndShowNothingOutside) {
    const Mesh mesh = box({3.0, 2.0, 1.0}, false);
    ASSERT_NEAR(signedVolume(mesh), -6.0, 1e-12);
    for (const FormFactors& factors : formFactors(mesh, 500)) {
        EXPECT_NEAR(sum(factors), 1.0, 0.02);
        EXPECT_EQ(factors.earth + factors.sky, 0.0);
    }
}

// The values are those of the closed formulas for two rectangles that face each other or share an edge.
TEST(FormFactors, BetweenTheSidesOfACubeAgreeWithTheClosedFormula) {
    const auto factors = formFactors(box({1.0, 1.0, 1.0}, false), 4000);
    for (std::size_t from = 0; from < 6; ++from)
        for (std::size_t to = 0; to < 6; ++to)
            EXPECT_NEAR(
                betweenSides(factors, from, to),
                from == to           ? 0.0
                : from / 2 == to / 2 ? 0.19982
                                     : 0.20004,
                0.004)
                << from << " to " << to;
}

TEST(FormFactors, OfAConvexBodyAreEarthAndSkyByTheSlopeOfTheFacet) {
    const Mesh mesh = box({1.0, 2.0, 3.0}, true);
    ASSERT_NEAR(signedVolume(mesh), 6.0, 1e-12);
    const auto factors = formFactors(mesh, 1000);
    for (std::size_t facet = 0; facet < factors.size(); ++facet) {
        const double up = unit(areaVector(mesh, mesh.facets[facet])).z;
        EXPECT_NEAR(factors[facet].sky, 0.5 * (1.0 + up), 0.01);
        EXPECT_NEAR(factors[facet].earth, 0.5 * (1.0 - up), 0.01);
        EXPECT_TRUE(factors[facet].visible.empty());
    }
}

TEST(FormFactors, AreThoseOfThePartThatShows) {
    // The small box stands half in the large one, and a third one is all inside.
    Mesh mesh = box({0.1, 0.1, 0.1}, true);
    for (Vec3d& point : mesh.points)
        point = point + Vec3d{0.0, 0.0, 0.5};
    append(mesh, box({1.0, 1.0, 1.0}, true));
    append(mesh, box({0.2, 0.2, 0.2}, true));
    const auto factors = formFactors(mesh, 1000);
    EXPECT_NEAR(sum(factors[0]), 1.0, 1e-9);
    EXPECT_NEAR(factors[0].sky, 0.5, 0.03) << "upright";
    EXPECT_NEAR(sum(factors[0]) - factors[0].sky - factors[0].earth, 0.5, 0.05) << "it looks down at the large box";
    EXPECT_EQ(sum(factors[24]), 0.0) << "shows nowhere";
}

TEST(FormFactors, ExchangeTheSameBothWays) {
    for (const auto& [mesh, rays] : Rows<Mesh, int>{{jet().mesh, 48}, {missile().mesh, 128}}) {
        const auto factors = formFactors(mesh, rays);
        std::map<std::pair<std::size_t, std::size_t>, double> exchanged;
        double total = 0.0;
        for (std::size_t facet = 0; facet < factors.size(); ++facet) {
            const double area = factors[facet].shown * length(areaVector(mesh, mesh.facets[facet]));
            EXPECT_NEAR(sum(factors[facet]), factors[facet].shown > 0.0 ? 1.0 : 0.0, 1e-9);
            for (const FormFactors::Visible& visible : factors[facet].visible) {
                const auto pair = std::minmax(facet, visible.facet);
                exchanged[pair] += facet < visible.facet ? area * visible.factor : -area * visible.factor;
                total += area * visible.factor;
            }
        }
        double difference = 0.0;
        for (const auto& [pair, value] : exchanged)
            difference += 2.0 * std::abs(value);
        EXPECT_LT(difference, 0.1 * total);
    }
}
