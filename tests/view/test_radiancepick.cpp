// What rays meet, against what is drawn there.
#include "radiancescene.h"

#include <random>

#include <QString>

#include "environmentvariable.h"
#include "groundray.h"
#include "makedemonstration.h"
#include "radiancepick.h"
#include "rows.h"
#include "terrainblocks.h"

using namespace sorvane;

namespace {
constexpr int kColumns = 9;
constexpr int kRows = 7;

// The depth at which a ray comes through the front of one of the triangles of a tile, in the order in which they are
// drawn.
std::optional<double> nearestTriangle(const TileGround& tile, const GroundRay& ray) {
    const std::vector<std::uint16_t> strip = stripIndices(kColumns, kRows, tile.placement.yvec[1] > 0.0F);
    const auto corner = [&](std::size_t i) -> Vec3d {
        const int post = strip[i];
        const auto& [x, y, z] =
            tile.placement.position(post % kColumns, post / kColumns, tile.heights[static_cast<std::size_t>(post)]);
        return {double{x}, double{y}, double{z}};
    };
    std::optional<double> nearest;
    for (std::size_t i = 0; i + 2 < strip.size(); ++i) {
        const Vec3d first = corner(i % 2 == 0 ? i : i + 1); // every other triangle of a strip turns the other way
        const Vec3d second = corner(i % 2 == 0 ? i + 1 : i);
        const Vec3d third = corner(i + 2);
        const Vec3d normal = cross(second - first, third - first);
        const double depth = dot(first - ray.eye, normal) / dot(ray.way, normal);
        const Vec3d at = ray.eye + depth * ray.way;
        const bool isWithin = dot(cross(second - first, at - first), normal) >= 0.0 &&
                              dot(cross(third - second, at - second), normal) >= 0.0 &&
                              dot(cross(first - third, at - third), normal) >= 0.0;
        if (isWithin && dot(ray.way, normal) < 0.0 && depth >= 0.0 && depth <= ray.farthest)
            nearest = std::min(nearest.value_or(depth), depth);
    }
    return nearest;
}

TEST(GroundRay, MeetsTheTrianglesThatAreDrawn) {
    std::mt19937 random(7);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    for (const TilePlacement& placement :
         {TilePlacement{{0.0F, 0.0F, 0.0F}, {1.0F, 0.0F}, {0.0F, 1.0F}, {1.0F, 1.0F, 1.0F}, kColumns, kRows},
          TilePlacement{{100.0F, -40.0F, 7.0F}, {1.0F, 0.0F}, {0.0F, -1.0F}, {2.0F, 3.0F, 0.5F}, kColumns, kRows},
          TilePlacement{{-5.0F, 3.0F, -2.0F}, {1.0F, 0.4F}, {-0.3F, 1.5F}, {1.0F, 1.0F, 2.0F}, kColumns, kRows}}) {
        std::vector<float> heights(std::size_t{kColumns} * kRows);
        for (float& height : heights)
            height = static_cast<float>(between(0.0, 2.0));
        const TileGround tile{placement, heights, placement.bounds(0.0F, 2.0F)};
        int met = 0;
        for (int i = 0; i < 2000; ++i) {
            const auto inTile = [&](double height) -> Vec3d {
                const auto [x, y, z] = placement.position(0, 0, 0.0F);
                const double column = between(-2.0, kColumns + 1.0);
                const double row = between(-2.0, kRows + 1.0);
                return {
                    double{x} + (double{placement.xvec[0]} * column + double{placement.xvec[1]} * row) *
                                    double{placement.scale[0]},
                    double{y} + (double{placement.yvec[0]} * column + double{placement.yvec[1]} * row) *
                                    double{placement.scale[1]},
                    double{z} + height};
            };
            // From above, from within the heights, and from below.
            const Vec3d eye = inTile(between(-2.0, 6.0));
            const GroundRay ray{eye, inTile(between(-3.0, 3.0)) - eye, between(0.5, 3.0)};
            const std::optional<double> expected = nearestTriangle(tile, ray);
            const std::optional<GroundHit> hit = meetGround(tile, ray);
            ASSERT_EQ(hit.has_value(), expected.has_value()) << i;
            if (!hit)
                continue;
            ++met;
            EXPECT_NEAR(hit->depth, *expected, 1e-5) << i;
            const Vec3d at = ray.eye + hit->depth * ray.way;
            const std::optional<std::size_t> post =
                placement.postAt(static_cast<float>(at.x), static_cast<float>(at.y));
            if (placement.yvec[0] == 0.0F) { // that function is for grids that point north
                EXPECT_EQ(hit->post, post) << i;
            }
        }
        EXPECT_GT(met, 300);
    }
}

TEST(GroundRay, LooksDownThroughHolesOnly) {
    const TilePlacement placement{{0.0F, 0.0F, 0.0F}, {1.0F, 0.0F}, {0.0F, 1.0F}, {1.0F, 1.0F, 1.0F}, 3, 3};
    std::vector<float> heights(9, 1.0F);
    heights[8] = std::nanf("");
    const TileGround tile{placement, heights, {{0.0F, 0.0F, -INFINITY}, {2.0F, 2.0F, INFINITY}}};
    for (const auto& [eye, way, farthest, expected] : Rows<Vec3d, Vec3d, double, std::optional<double>>{
             {{0.3, 0.6, 3.0}, {0.0, 0.0, -1.0}, 10.0, 2.0},
             {{0.3, 0.6, 3.0}, {0.0, 0.0, -1.0}, 1.5, {}},
             {{0.3, 0.6, -3.0}, {0.0, 0.0, 1.0}, 10.0, {}},
             {{0.3, 0.6, 3.0}, {0.0, 0.0, 1.0}, 10.0, {}},
             {{1.5, 1.5, 3.0}, {0.0, 0.0, -1.0}, 10.0, {}},    // the cell with the post that is nowhere
             {{2.5, 1.5, 3.0}, {-1.0, -0.7, -1.0}, 10.0, 2.0}, // across it
             {{1.0, 0.5, 3.0}, {0.0, 0.0, -1.0}, 10.0, 2.0},   // between two cells
         }) {
        const std::optional<GroundHit> hit = meetGround(tile, {eye, way, farthest});
        EXPECT_EQ(hit.has_value(), expected.has_value()) << eye.x << ' ' << eye.z << ' ' << farthest;
        if (hit && expected) {
            EXPECT_NEAR(hit->depth, *expected, 1e-12);
        }
    }
}

// The demonstration's engagements over their ground: rays through a grid over the picture.
struct RadiancePickTest : testing::Test {
    static constexpr int kWidth = 12;
    static constexpr int kHeight = 9;
    static constexpr float kNothing = -1.0F;

    TemporaryDirectory folder;
    EnvironmentVariable dataRoot{"PELSAR_DATA", (folder.path() / "data/").string()};
    OffscreenScene scene{kWidth, kHeight};
    RadianceFrame frame;
    RadiancePick pick;
    std::map<Picked::Thing, int> met;

    // Where the radiance comes from, by what is missing in the picture without it.
    Picked::Thing
    drawn(const std::vector<SceneEngagement>& shown, const Camera& camera, double time, const TangentBox& box) {
        const auto sample = [&](bool hasTerrain, bool hasFlares) {
            return frame
                .sample(
                    shown, camera,
                    {.width = kWidth,
                     .height = kHeight,
                     .time = time,
                     .showTerrain = hasTerrain,
                     .background = kNothing,
                     .showFlares = hasFlares},
                    box)
                .value_or(NAN);
        };
        const float all = sample(true, true);
        const float withoutGround = sample(false, true);
        if (all == kNothing)
            return Picked::Thing::Sky;
        if (all != withoutGround)
            return Picked::Thing::Ground;
        return withoutGround != sample(false, false) ? Picked::Thing::Flare : Picked::Thing::Target;
    }
    int unlike(const std::vector<SceneEngagement>& shown, const Camera& camera, double time) {
        const PixelPlane plane(30.0, kWidth, kHeight);
        int count = 0;
        for (int row = 0; row < kHeight; ++row)
            for (int column = 0; column < kWidth; ++column) {
                const TangentBox box = plane.boxOf(column, row);
                const Tangents middle{(box.left + box.right) / 2.0, (box.bottom + box.top) / 2.0};
                const Picked picked = pick.along(
                    rayThrough(LookAt(camera), middle), shown, camera.mode(), {.showTerrain = true, .time = time});
                ++met[picked.thing];
                EXPECT_EQ(
                    picked.thing == Picked::Thing::Ground, picked.thing != Picked::Thing::Sky && picked.number == 0);
                count += drawn(shown, camera, time, box) == picked.thing ? 0 : 1;
            }
        return count;
    }
};

TEST_F(RadiancePickTest, MeetsWhatIsDrawn) {
    ASSERT_FALSE(makeDemonstration(folder.path()).has_value());
    for (const auto& [name, time, eye, lookAt] : Rows<const char*, double, Vertex, Vertex>{
             {"ETXYZ.OUT.turn", 0.0, {2600.0F, 600.0F, -420.0F}, {600.0F, -600.0F, -300.0F}},
             {"ETXYZ.OUT.weave.Z", 0.0, {2600.0F, -1500.0F, -150.0F}, {3900.0F, -4300.0F, -350.0F}},
             {"ETXYZ.OUT.turn", 0.0, {2890.0F, -2280.0F, -706.0F}, {2900.0F, -2300.0F, -700.0F}}}) {
        etxyz engagement;
        engagement.LoadETXYZ(QString::fromStdString((folder.path() / name).string()));
        engagement.InitHardbodies();
        testing::internal::CaptureStdout(); // what loading the ground says
        const int count = unlike(
            {{EngagementId{1}, &engagement}},
            cameraAt({eye[0], eye[1], eye[2], 1.0F}, {lookAt[0], lookAt[1], lookAt[2], 1.0F}), time);
        testing::internal::GetCapturedStdout();
        EXPECT_LE(count, 1) << name;
    }
    EXPECT_GT(met[Picked::Thing::Sky], 50);
    EXPECT_GT(met[Picked::Thing::Ground], 50);
    EXPECT_GT(met[Picked::Thing::Target], 10);
}
} // namespace
