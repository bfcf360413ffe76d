// What a drawn frame shows.
#include <gtest/gtest.h>

#include <cmath>

#include "pixels.h"
#include "scene.h"
#include "scenepicture.h"

using namespace sorvane;

namespace {
int greenPixels(const QImage& picture) {
    return countPixels(picture, [](int r, int g, int b) { return r == 0 && g == 255 && b == 0; });
}
int yellowPixels(const QImage& picture) {
    return countPixels(picture, [](int r, int g, int b) { return r == 255 && g == 255 && b == 0; });
}
int cyanPixels(const QImage& picture) {
    return countPixels(picture, [](int r, int g, int b) { return r == 0 && g == 255 && b == 255; });
}
int gridPixels(const QImage& picture) {
    return countPixels(picture, [](int r, int g, int b) { return r == 102 && g == 102 && b == 128; });
}
int reticlePixels(const QImage& picture) {
    return countPixels(picture, [](int r, int g, int b) { return (r == 178 || r == 179) && g == r && b == r; });
}
// The target flies along +y 100 units up, the threat along +y 50 units up, a sample every 0.1 s for 2 s.
struct SceneTest : testing::Test {
    OffscreenScene scene;
    etxyz engagement;
    Camera camera;
    SceneOptions options;

    SceneTest() {
        engagement.atm = std::make_unique<AtmFile>();
        for (int i = 0; i <= 20; ++i) {
            keyframe sample;
            sample.time = 0.1 * i;
            sample.targetPos[1] = sample.threatPos[1] = static_cast<float>(10 * (i - 10));
            sample.targetPos[2] = -100.0F;
            sample.threatPos[2] = -50.0F;
            engagement.keyframes.insert(sample.time, sample);
        }
        camera.setMode(ViewFree);
        camera.place({500.0F, 0.0F, -60.0F, 1.0F}, {0.0F, 0.0F, -60.0F, 1.0F});
        options.showGrid = false;
        options.time = 2.0;
    }
    QImage draw(bool isHidden = false) {
        return scene.draw({{EngagementId{1}, &engagement, isHidden}}, camera, options);
    }
};

TEST_F(SceneTest, ShowsTargetPathAboveThreatPathInTheirColours) {
    options.showDropLines = false;
    const QImage picture = draw();
    EXPECT_GT(greenPixels(picture), 100);
    EXPECT_GT(yellowPixels(picture), 100);
    // Upright: altitude is −z, and the higher path lies nearer to the top row.
    int firstGreenRow = picture.height();
    int firstYellowRow = picture.height();
    for (int y = picture.height() - 1; y >= 0; --y) {
        const QRgb pixel = picture.pixel(picture.width() / 2, y);
        if (pixel == qRgb(0, 255, 0))
            firstGreenRow = y;
        if (pixel == qRgb(255, 255, 0))
            firstYellowRow = y;
    }
    EXPECT_LT(firstGreenRow, firstYellowRow);
    EXPECT_LT(firstYellowRow, picture.height());
}

TEST_F(SceneTest, PlusYIsOnTheLeftSeenFromPlusX) {
    options.showDropLines = false;
    options.time = 0.95; // the first half of the flight, at y < 0
    const QImage picture = draw();
    EXPECT_EQ(greenPixels(picture.copy(0, 0, 98, 150)), 0);
    EXPECT_GT(greenPixels(picture.copy(100, 0, 100, 150)), 40);
}

TEST_F(SceneTest, LinesEndAtTheLastSampleThatIsNotAfterTheTime) {
    options.showDropLines = false;
    int previous = 0;
    for (const double time : {0.25, 0.95, 2.0}) {
        options.time = time;
        const int green = greenPixels(draw());
        EXPECT_GT(green, previous);
        previous = green;
    }
    options.time = 0.25;
    const int atQuarter = greenPixels(draw());
    options.time = 0.2;
    EXPECT_EQ(greenPixels(draw()), atQuarter);
}

TEST_F(SceneTest, EachOptionShowsItsPart) {
    const int all = litPixels(draw());
    options.showDropLines = false;
    const int withoutDropLines = litPixels(draw());
    EXPECT_LT(withoutDropLines, all);
    options.showGrid = true;
    EXPECT_GT(gridPixels(draw()), 50);
    options.showGrid = false;
    options.showHistoryLines = false;
    EXPECT_EQ(litPixels(draw()), 0);
}

TEST_F(SceneTest, AHiddenEngagementDrawsNothingAndAddsNoSample) {
    engagement.keyframes.remove(0.0);
    engagement.InitHardbodies();
    options.showTerrain = true;
    EXPECT_EQ(litPixels(draw(true)), 0);
    EXPECT_FALSE(engagement.keyframes.contains(0.0));
}

TEST_F(SceneTest, TerrainAddsAnEmptySampleAtTimeZeroOnceTheBodiesAreThere) {
    engagement.keyframes.remove(0.0);
    options.showTerrain = true;
    draw();
    EXPECT_FALSE(engagement.keyframes.contains(0.0)) << "nothing of the terrain happens before initialisation";
    engagement.InitHardbodies();
    draw();
    ASSERT_TRUE(engagement.keyframes.contains(0.0));
    EXPECT_EQ(engagement.keyframes.value(0.0), keyframe{});
}

TEST_F(SceneTest, TheColourNameCyanAndOnlyItChangesTheThreatsPath) {
    struct Row {
        const char* name;
        bool isCyan;
    };
    for (const Row& row : {Row{"cyan", true}, Row{"Cyan", false}, Row{"", false}, Row{"cyan blue", false}}) {
        engagement.headerText9 = QString::fromLatin1(row.name);
        const QImage picture = draw();
        EXPECT_EQ(cyanPixels(picture) > 50, row.isCyan) << row.name;
        EXPECT_EQ(yellowPixels(picture) > 50, !row.isCyan) << row.name;
    }
}

TEST_F(SceneTest, GyroViewShowsAReticleInsteadOfTheThreatsPath) {
    camera.setMode(ViewGyro);
    camera.place({500.0F, 0.0F, -60.0F, 1.0F}, {400.0F, 0.0F, -60.0F, 1.0F});
    engagement.fieldOfView = 15.0F;
    const QImage picture = draw();
    EXPECT_EQ(yellowPixels(picture), 0);
    EXPECT_GT(greenPixels(picture), 100);
    EXPECT_GT(reticlePixels(picture), 100);
    // Half of the 30 degree view: the circle reaches tan(7.5°)/tan(15°) = 0.491 of the half height from the middle.
    int top = picture.height();
    for (int y = picture.height() - 1; y >= 0; --y)
        if (reticlePixels(picture.copy(picture.width() / 2, y, 1, 1)) == 1)
            top = y;
    EXPECT_NEAR(top, 75 - 0.491 * 75, 2.0);
    options.reticleOf = EngagementId{0}; // another one's
    EXPECT_EQ(reticlePixels(draw()), 0);
}

TEST_F(SceneTest, ANearFlareIsASphereAndAFarOneAPoint) {
    flareKeyframe flare;
    flare.pos[2] = -60.0F;
    flare.intensity[0] = flare.intensity[1] = flare.intensity[2] = 5.0F;
    flare.scalar = 3.0e5F;
    for (keyframe& sample : engagement.keyframes)
        sample.flares = {flare};
    options.showHistoryLines = false;
    const int sphere = litPixels(draw());
    // Radius 5 at distance 500 with 150 rows for 30 degrees: 5 · 75 / (500 · tan 15°) = 2.8 pixels, area 24.5.
    EXPECT_NEAR(sphere, 24, 8);
    camera.place({5000.0F, 0.0F, -60.0F, 1.0F}, {0.0F, 0.0F, -60.0F, 1.0F});
    EXPECT_EQ(litPixels(draw()), 1);
}

TEST_F(SceneTest, FlaresThatCanNotBeProjectedAreHarmless) {
    flareKeyframe flat; // zero radii make the matrix singular
    flareKeyframe nowhere;
    nowhere.pos[0] = nowhere.scalar = std::nanf("");
    flareKeyframe behind;
    behind.pos[0] = 10000.0F;
    for (keyframe& sample : engagement.keyframes)
        sample.flares = {flat, nowhere, behind};
    options.showHistoryLines = false;
    EXPECT_EQ(litPixels(draw()), 0);
}

TEST_F(SceneTest, FlareTrailsShowWhereFlaresHaveBeen) {
    flareKeyframe flare;
    flare.intensity[0] = flare.intensity[1] = flare.intensity[2] = 0.0F;
    for (keyframe& sample : engagement.keyframes) {
        flare.pos[1] = static_cast<float>(40.0 * (sample.time - 1.0));
        flare.pos[2] = -75.0F;
        sample.flares = {flare};
    }
    const auto isTrail = [](int r, int g, int b) {
        return r > 90 && r > 2 * g && r > 2 * b;
    };
    options.showDropLines = false;
    EXPECT_GT(countPixels(draw(), isTrail), 20);
    options.time = 0.0;
    EXPECT_EQ(countPixels(draw(), isTrail), 0);
    options.time = 2.0;
    options.showHistoryLines = false;
    EXPECT_EQ(countPixels(draw(), isTrail), 0);
}

TEST_F(SceneTest, LineStylesTellThePathsApartWithoutTheirColours) {
    flareKeyframe flare;
    for (keyframe& sample : engagement.keyframes) {
        flare.pos[1] = static_cast<float>(100.0 * (sample.time - 1.0));
        flare.pos[2] = -75.0F;
        sample.flares = {flare};
    }
    options.showDropLines = false;
    const auto redPixels = [](const QImage& picture) {
        return countPixels(picture, [](int r, int g, int b) { return r > 90 && r > 2 * g && r > 2 * b; });
    };
    const QImage plain = draw();
    options.lineStyles = true;
    const QImage styled = draw();
    EXPECT_EQ(greenPixels(styled), greenPixels(plain));
    EXPECT_NEAR(yellowPixels(styled), yellowPixels(plain) * 3 / 4, 10);
    EXPECT_NEAR(redPixels(styled), redPixels(plain) / 2, 5);
    options.lineStyles = false;
    EXPECT_EQ(draw(), plain) << "nothing stays on";
}

TEST_F(SceneTest, AnEngagementWithoutSamplesDrawsNothing) {
    engagement.keyframes.clear();
    EXPECT_EQ(litPixels(draw()), 0);
}

TEST(SunDirection, IsTurnedIntoEyeCoordinatesAndNotMoved) {
    // The sun of an empty atmosphere: zenith 0, straight up along +z.
    const AtmFile atmosphere;
    const float quarterAboutXAndMoved[16] = {1, 0, 0, 0, 0, 0, 1, 0, 0, -1, 0, 0, 100, 200, 300, 1};
    const Vector<float> sun = sunDirectionInEye(atmosphere, quarterAboutXAndMoved);
    EXPECT_NEAR(sun.ElementAt(0), 0.0, 1e-6);
    EXPECT_NEAR(sun.ElementAt(1), -1.0, 1e-6);
    EXPECT_NEAR(sun.ElementAt(2), 0.0, 1e-6);
    EXPECT_EQ(sun.ElementAt(3), 0.0F);
}
} // namespace
