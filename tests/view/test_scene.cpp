// What a drawn frame shows.
#include <gtest/gtest.h>

#include <cmath>

#include "pixels.h"
#include "scene.h"
#include "scenepicture.h"

using namespace sorvane;

namespace {
int yellowPixels(const QImage& picture) {
    return countPixels(picture, [](int r, int g, int b) { return r == 255 && g == 255 && b == 0; });
}
int reddishPixels(const QImage& picture) {
    return countPixels(picture, [](int r, int g, int b) { return r > 90 && r > 2 * g && r > 2 * b; });
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
    for (const char* const name : {"cyan", "Cyan", "", "cyan blue"}) {
        engagement.headerText9 = QString::fromLatin1(name);
        const QImage picture = draw();
        const bool isCyan = name == std::string("cyan");
        EXPECT_EQ(countPixels(picture, [](int r, int g, int b) { return r == 0 && g == 255 && b == 255; }) > 50, isCyan)
            << name;
        EXPECT_EQ(yellowPixels(picture) > 50, !isCyan) << name;
    }
}

TEST_F(SceneTest, GyroViewShowsAReticleInsteadOfTheThreatsPath) {
    camera.setMode(ViewGyro);
    camera.place({500.0F, 0.0F, -60.0F, 1.0F}, {400.0F, 0.0F, -60.0F, 1.0F});
    engagement.fieldOfView = 15.0F;
    const auto isOfReticle = [](int r, int g, int b) {
        return (r == 178 || r == 179) && g == r && b == r;
    };
    const auto reticlePixels = [&] {
        return countPixels(draw(), isOfReticle);
    };
    EXPECT_EQ(yellowPixels(draw()), 0);
    const int ofOne = reticlePixels();
    EXPECT_GT(ofOne, 100);
    etxyz narrower;
    narrower.keyframes = engagement.keyframes;
    narrower.fieldOfView = 8.0F;
    const QImage both =
        scene.draw({{EngagementId{1}, &engagement, false}, {EngagementId{2}, &narrower, false}}, camera, options);
    EXPECT_GT(countPixels(both, isOfReticle), ofOne + 50) << "one for each field of view";
    options.reticleOf = EngagementId{0}; // another one's
    EXPECT_EQ(reticlePixels(), 0);
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

TEST_F(SceneTest, AFlareShowsThatReachesIntoThePicture) {
    options.showHistoryLines = false;
    for (const auto& [y, isSeen] : {std::pair{230.0F, true}, {-230.0F, true}, {290.0F, false}}) { // 178 is the edge
        flareKeyframe flare;
        flare.intensity[0] = flare.intensity[1] = flare.intensity[2] = 100.0F;
        flare.pos[1] = y;
        flare.pos[2] = -60.0F;
        flare.scalar = 1e9F;
        for (keyframe& sample : engagement.keyframes)
            sample.flares = {flare};
        EXPECT_EQ(litPixels(draw()) > 50, isSeen) << y;
    }
}

TEST_F(SceneTest, FlareTrailsShowWhereFlaresHaveBeen) {
    flareKeyframe flare;
    flare.intensity[0] = flare.intensity[1] = flare.intensity[2] = 0.0F;
    for (keyframe& sample : engagement.keyframes) {
        flare.pos[1] = static_cast<float>(40.0 * (sample.time - 1.0));
        flare.pos[2] = -75.0F;
        sample.flares = {flare};
    }
    options.showDropLines = false;
    EXPECT_GT(reddishPixels(draw()), 20);
    options.time = 0.0;
    EXPECT_EQ(reddishPixels(draw()), 0);
    options.time = 2.0;
    options.showHistoryLines = false;
    EXPECT_EQ(reddishPixels(draw()), 0);
}

// It burns from 0.5 s on, at −20, and moves by 40 units a second: at 1.25 s the samples have it at 8, in the end at 40.
TEST_F(SceneTest, AFlaresTrailEndsAtTheLastSampleBeforeTheTime) {
    options.showDropLines = false;
    for (const int missing : {0, 10}) { // the number of a sample that doesn't list it
        SCOPED_TRACE(missing);
        int number = 0;
        for (keyframe& sample : engagement.keyframes) {
            flareKeyframe flare;
            flare.pos[1] = static_cast<float>(40.0 * (sample.time - 1.0));
            flare.pos[2] = -75.0F;
            sample.flares.clear();
            if (number >= 5 && number != missing)
                sample.flares.append(flare);
            ++number;
        }
        scene.forget(EngagementId{1});
        options.time = 2.0;
        const int whole = reddishPixels(draw());
        ASSERT_GT(whole, 30);
        options.time = 1.25;
        EXPECT_NEAR(reddishPixels(draw()) / static_cast<double>(whole), 28.0 / 60.0, 0.04);
        options.time = 0.45;
        EXPECT_EQ(reddishPixels(draw()), 0);
    }
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
