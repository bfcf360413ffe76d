// The shaded bodies in the scene, from the demonstration's own files.
#include <gtest/gtest.h>

#include "glapi.h"

#include <cmath>
#include <filesystem>

#include "bodies.h"
#include "environmentvariable.h"
#include "makedemonstration.h"
#include "pixels.h"
#include "rows.h"
#include "scene.h"
#include "scenepicture.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
// The demonstration's turning engagement at its start, seen from 50 units beside the target.
struct BodiesTest : testing::Test {
    TemporaryDirectory folder;
    EnvironmentVariable dataRoot{"PELSAR_DATA", (folder.path() / "data/").string()};
    OffscreenScene scene;
    etxyz engagement;
    Camera camera;
    SceneOptions options;

    BodiesTest() {
        EXPECT_FALSE(sorvane::makeDemonstration(folder.path()).has_value());
        options.showGrid = options.showHistoryLines = options.showDropLines = false;
        camera.setMode(ViewFree);
    }
    void load() {
        engagement.LoadETXYZ(QString::fromStdString((folder.path() / "ETXYZ.OUT.turn").string()));
        ASSERT_FALSE(engagement.keyframes.isEmpty());
    }
    // Looks at a body from an offset.
    void lookAt(const float (&position)[3], float dx, float dy, float dz) {
        const Vector<float> centre(position[0], position[1], position[2], 1.0F);
        camera.place(centre + Vector<float>(dx, dy, dz, 0.0F), centre);
    }
    QImage draw() { return scene.draw({{EngagementId{1}, &engagement}}, camera, options); }
};

TEST_F(BodiesTest, TargetAndThreatStandWhereTheyFlyOnceInitialised) {
    load();
    const keyframe start = engagement.InterpolatedFrame(0.0);
    lookAt(start.targetPos, 50.0F, 0.0F, 0.0F);
    EXPECT_EQ(litPixels(draw()), 0) << "nothing before the initialisation";
    engagement.InitHardbodies();
    ASSERT_TRUE(engagement.target->isUsable());
    ASSERT_TRUE(engagement.threat->isUsable());
    EXPECT_GT(litPixels(draw()), 150);
    lookAt(start.threatPos, 10.0F, 0.0F, 0.0F);
    EXPECT_GT(litPixels(draw()), 150);
}

TEST_F(BodiesTest, GyroViewShowsTheTargetAndNotTheThreat) {
    load();
    engagement.InitHardbodies();
    const keyframe start = engagement.InterpolatedFrame(0.0);
    lookAt(start.threatPos, 10.0F, 0.0F, 0.0F);
    camera.setMode(ViewGyro);
    const auto isNoReticle = [](int r, int, int) {
        return r > 0 && r != 178 && r != 179;
    };
    EXPECT_EQ(countPixels(draw(), isNoReticle), 0);
    lookAt(start.targetPos, 50.0F, 0.0F, 0.0F);
    EXPECT_GT(countPixels(draw(), isNoReticle), 100);
}

TEST_F(BodiesTest, AnEngagementWithABrokenModelStillPlaysWithItsLines) {
    std::filesystem::resize_file(folder.path() / "data/tgt4004/tgt4004.vnl", 1000);
    load();
    testing::internal::CaptureStderr();
    engagement.InitHardbodies();
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_FALSE(engagement.target->isUsable());
    EXPECT_TRUE(engagement.threat->isUsable());
    EXPECT_TRUE(engagement.areHardbodiesInitialized());
    options.showHistoryLines = true;
    options.time = 3.0;
    lookAt(engagement.InterpolatedFrame(3.0).targetPos, 500.0F, 0.0F, 0.0F);
    EXPECT_GT(litPixels(draw()), 20);
}

// While it lives, how often programs are made current and meshes of terrain drawn.
struct CountedCalls {
    CountedCalls() {
        programs = tiles = 0;
        useProgram = __glewUseProgram;
        drawElements = __glewDrawRangeElements;
        __glewUseProgram = [](GLuint program) {
            programs += program != 0 ? 1 : 0;
            useProgram(program);
        };
        __glewDrawRangeElements = [](GLenum mode, GLuint first, GLuint last, GLsizei count, GLenum type,
                                     const void* indices) {
            ++tiles;
            drawElements(mode, first, last, count, type, indices);
        };
    }
    ~CountedCalls() {
        __glewUseProgram = useProgram;
        __glewDrawRangeElements = drawElements;
    }
    CountedCalls(const CountedCalls&) = delete;
    CountedCalls& operator=(const CountedCalls&) = delete;

    static inline int programs = 0;
    static inline int tiles = 0;
    static inline PFNGLUSEPROGRAMPROC useProgram = nullptr;
    static inline PFNGLDRAWRANGEELEMENTSPROC drawElements = nullptr;
};

TEST_F(BodiesTest, WhatIsOutOfSightOrTooSmallCostsNothingAndAPixelIsAPoint) {
    load();
    engagement.InitHardbodies();
    engagement.threat = std::make_unique<Hardbody>();
    const keyframe start = engagement.InterpolatedFrame(0.0);
    const float reach = engagement.target->reach();
    EXPECT_LE(reach, radiusOf(*engagement.target));
    EXPECT_GT(reach, radiusOf(*engagement.target) / 2.0);
    const auto programsAndPicture = [&] {
        const CountedCalls counted;
        const QImage picture = draw();
        return std::pair(CountedCalls::programs, picture);
    };
    // A pixel is a unit 279.9 units away: half of 150 rows over the tangent of 15 degrees.
    for (const auto& [pixels, programs] : Rows<float, int>{{1.05F, 1}, {0.95F, 0}, {0.55F, 0}, {0.45F, 0}}) {
        lookAt(start.targetPos, 2.0F * reach * 279.9F / pixels, 0.0F, 0.0F);
        const auto [drawn, picture] = programsAndPicture();
        EXPECT_EQ(drawn, programs) << pixels;
        if (programs > 0)
            continue;
        EXPECT_EQ(litPixels(picture), pixels > 0.5F ? 1 : 0) << pixels;
        if (pixels > 0.5F) {
            const int grey = static_cast<int>(std::lround(255.0F * engagement.target->grey()));
            EXPECT_EQ(
                countPixels(picture, [&](int r, int g, int b) { return std::abs(r - grey) <= 1 && r == g && g == b; }),
                1);
        }
    }
    // Seen past it, its middle beyond an edge of the picture by as much of its reach.
    for (const auto& [beyond, programs] : Rows<float, int>{{0.9F, 1}, {2.5F, 0}})
        for (const float side : {-1.0F, 1.0F})
            for (const bool isUpright : {false, true}) {
                const float half = 200.0F * (isUpright ? 75.0F : 100.0F) / 279.9F;
                const float aside = side * (half + beyond * reach);
                const Vector<float> centre(
                    start.targetPos[0], start.targetPos[1] + (isUpright ? 0.0F : aside),
                    start.targetPos[2] + (isUpright ? aside : 0.0F), 1.0F);
                camera.place(centre + Vector<float>(200.0F, 0.0F, 0.0F, 0.0F), centre);
                EXPECT_EQ(programsAndPicture().first, programs) << beyond << ' ' << side << ' ' << isUpright;
            }
    camera.place({start.targetPos[0] + 50.0F, start.targetPos[1], start.targetPos[2], 1.0F}, {1e5F, 0.0F, 0.0F, 1.0F});
    EXPECT_EQ(programsAndPicture().first, 0) << "behind the eye";
}

TEST_F(BodiesTest, WhatIsTheSameAtTheSamePlaceIsDrawnOnce) {
    load();
    engagement.InitHardbodies();
    etxyz same;
    etxyz moved;
    for (etxyz* const other : {&same, &moved}) {
        other->LoadETXYZ(QString::fromStdString((folder.path() / "ETXYZ.OUT.turn").string()));
        other->InitHardbodies();
    }
    for (keyframe& sample : moved.keyframes) {
        sample.targetPos[1] += 5.0F;
        sample.threatPos[2] -= 100.0F;
    }
    EXPECT_EQ(same.target->model(), engagement.target->model());
    options.showTerrain = true;
    lookAt(engagement.InterpolatedFrame(0.0).targetPos, 50.0F, 0.0F, -30.0F);
    testing::internal::CaptureStdout(); // what loading the ground says
    const QImage alone = draw();
    QImage both;
    const auto count = [&](etxyz& second) {
        both = scene.draw({{EngagementId{1}, &engagement}, {EngagementId{2}, &second}}, camera, options);
        const CountedCalls counted;
        scene.draw({{EngagementId{1}, &engagement}, {EngagementId{2}, &second}}, camera, options);
        return std::pair(CountedCalls::programs, CountedCalls::tiles);
    };
    const auto [programsOfOne, tilesOfOne] = count(same);
    const bool isLikeOne = both == alone;
    const auto ofTwo = count(moved);
    camera.place({0.0F, 0.0F, -500.0F, 1.0F}, {1.0F, 0.0F, -2000.0F, 1.0F});
    const auto ofTheSky = count(same);
    // Along the ground's northern side: all of it lies ahead, and to the right by more than the picture shows.
    float west = 0.0F;
    float side = 0.0F;
    for (std::size_t i = 0; i < engagement.terrain->tileCount(); ++i) {
        const TileBounds& bounds = engagement.terrain->tile(i).meshBounds();
        west = std::min(west, bounds.minimum[0]);
        side = std::max({side, std::abs(bounds.minimum[1]), std::abs(bounds.maximum[1])});
    }
    camera.place({west - 1000.0F, 3.0F * side, -500.0F, 1.0F}, {west, 3.0F * side, -500.0F, 1.0F});
    const auto ofTheHorizon = count(same);
    testing::internal::GetCapturedStdout();
    EXPECT_TRUE(isLikeOne);
    EXPECT_GT(tilesOfOne, 0);
    EXPECT_EQ(programsOfOne, 1 + tilesOfOne);
    EXPECT_EQ(ofTwo, std::pair(2 * programsOfOne, 2 * tilesOfOne));
    EXPECT_EQ(ofTheSky, std::pair(0, 0));
    EXPECT_EQ(ofTheHorizon, std::pair(0, 0));
}
} // namespace
