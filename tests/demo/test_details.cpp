// What the makers of the demonstration do at the places where a look at it would not tell: the nearest of two facets,
// angles past a half turn, the order of numbers on a line, slopes and the sun.
#include <array>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "bodyfolders.h"
#include "bvh.h"
#include "groundclass.h"
#include "kinematics.h"
#include "landscapemap.h"
#include "radfile.h"
#include "spectrum.h"
#include "trajectory.h"

using namespace sorvane;

TEST(Bvh, FindsTheNearestFacetWhicheverComesFirst) {
    for (const bool isReversed : {false, true}) {
        Mesh mesh;
        for (int layer = 0; layer < 6; ++layer) {
            const double z = isReversed ? 5 - layer : layer;
            const std::size_t first = mesh.points.size();
            mesh.points.insert(mesh.points.end(), {{-1, -1, z}, {3, -1, z}, {-1, 3, z}});
            mesh.facets.push_back({{first, first + 1, first + 2}, {}});
        }
        const Bvh bvh(mesh);
        EXPECT_EQ(bvh.closestHit({{0, 0, 9}, {0, 0, -1}}, 99), isReversed ? 0U : 5U);
        EXPECT_EQ(bvh.closestHit({{0, 0, -9}, {0, 0, 1}}, 99), isReversed ? 5U : 0U);
    }
}

TEST(Kinematics, AnglesRunOnPastAHalfTurnAndFlaresFall) {
    EngagementPlan plan;
    plan.targetStart = {-3000.0, 400.0, -1000.0};
    plan.targetHeading = 270.0; // across the line at which headings end
    plan.targetSpeed = 120.0;
    plan.targetBank = plan.targetClimb = [](double) {
        return 0.0;
    };
    plan.threatSpeed = [](double) {
        return 300.0;
    };
    plan.flares = {{0.5, 1, 1}};
    const std::vector<TrajectorySample> samples = fly(plan);
    ASSERT_GT(samples.size(), 300U);
    for (std::size_t i = 1; i < samples.size(); ++i) {
        ASSERT_LT(std::abs(samples[i].gyro.z - samples[i - 1].gyro.z), 20.0) << i;
        ASSERT_LT(std::abs(samples[i].threatAttitude.z - samples[i - 1].threatAttitude.z), 20.0) << i;
    }
    EXPECT_GT(samples.back().gyro.z, 180.0);
    ASSERT_EQ(samples[60].flares.size(), 1U);
    EXPECT_NEAR(samples[60].flares[0].position.z - samples[60].targetPosition.z, 2.1, 0.2)
        << "a tenth of a second down";
}

TEST(TrajectoryText, WritesTheNumbersOfARecordInTheirOrder) {
    TrajectorySample sample{0.25, {1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}, 1000, 300, {13, 14, 15}, {}};
    sample.flares = {
        {1, 2, {3, 4, 5}, 6, {7, 8, 9}, {10, 11, 12}, 3}, {2, 1, {3, 4, 5}, 6, {7, 8, 9}, {10, 11, 12}, 1}};
    const std::string text = trajectoryText({}, {sample}, Comments::None);
    EXPECT_THAT(
        text, testing::EndsWith("\n0.250 2 1.000 2.000 3.000 4.000 5.000 6.000\n"
                                "7.000 8.000 9.000 10.000 11.000 12.000\n"
                                "1000.000 300.000 13.000 14.000 15.000\n"
                                "1 2 3.000 4.000 5.000 6.000 7.000 8.000 9.000 10.000 11.000 12.000 3\n"
                                "2 1 3.000 4.000 5.000 6.000 7.000 8.000 9.000 10.000 0.000 0.000 1\n"));
}

TEST(LandscapeMap, LeansAsItsHeightsDoAndWarmsTowardsTheSun) {
    AtmosphereValues sun{};
    sun.solarZenith = 60.0;
    sun.solarAzimuth = 90.0; // in the east
    // The square, and the uplands beside it with means of its finer ground.
    for (const MapGrid& grid : {MapGrid{60, 60, 100.0}, MapGrid{60, 60, 100.0, -6500.0, 1000.0, 3}}) {
        SCOPED_TRACE(grid.west);
        const LandscapeMap map = mapOf(grid, 500.0, sun);
        std::array<double, 2> radiance{}; // of slopes to the west and to the east
        std::array<int, 2> posts{};
        for (std::size_t row = 1; row < 59; ++row)
            for (std::size_t column = 1; column < 59; ++column) {
                const std::size_t post = 60 * row + column;
                const float rise = (map.heights[post + 1] - map.heights[post - 1]) / 200.0F;
                const float rowRise = (map.heights[post + 60] - map.heights[post - 60]) / 200.0F;
                const auto& normal = map.normals[post];
                ASSERT_NEAR(normal.x, -rise * normal.z, 1e-3);
                ASSERT_NEAR(normal.y, -rowRise * normal.z, 1e-3);
                if (map.classes[post] == GroundClass::Water || std::abs(normal.x) <= 0.05F)
                    continue;
                radiance.at(normal.x > 0.0F ? 1 : 0) += static_cast<double>(map.radiances[post]);
                ++posts.at(normal.x > 0.0F ? 1 : 0);
            }
        ASSERT_TRUE(posts[0] > 100 && posts[1] > 100);
        EXPECT_GT(radiance[1] / posts[1], 1.05 * radiance[0] / posts[0]);
    }
}

TEST(Spectrum, OfRockAndSoilRunsDownwards) {
    for (const GroundCover& cover : kGroundCovers) {
        std::istringstream text(spectrumText(cover));
        std::string line;
        for (int i = 0; i < 26; ++i)
            std::getline(text, line);
        double first = 0.0;
        double reflectance = 0.0;
        double second = 0.0;
        text >> first >> reflectance >> second;
        EXPECT_EQ(first > second, cover.ground == GroundClass::Soil || cover.ground == GroundClass::Rock) << cover.name;
    }
}

TEST(BodyFiles, GiveTheThreatsSixthBandThreeFifthsOfTheOthers) {
    std::string bytes[2];
    for (const DemonstrationFile& file : bodyFiles())
        if (file.name == "tgt0450/tgt0450_b0001.rad" || file.name == "tgt0450/tgt0450_b0006.rad")
            bytes[file.name.ends_with("6.rad") ? 1 : 0] = file.contents;
    RadFile first;
    RadFile sixth;
    const auto facets = static_cast<int>((bytes[0].size() - 84) / 8);
    ASSERT_TRUE(first.parse(bytes[0], facets) && sixth.parse(bytes[1], facets));
    for (int facet = 0; facet < facets; facet += 97)
        EXPECT_NEAR(sixth.rad()[facet], 0.6F * first.rad()[facet], 1e-9F);
}
