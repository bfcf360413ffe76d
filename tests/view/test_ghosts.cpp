// Engagements that are drawn as ghosts.
#include <cmath>

#include <gtest/gtest.h>

#include "environmentvariable.h"
#include "pixels.h"
#include "scene.h"
#include "scenepicture.h"

using namespace sorvane;

namespace {
constexpr EngagementId kFollowed{1};
constexpr EngagementId kOther{2};

// Both fly along +y, from −100 to 100 in 2 s: the target 100 units up and the threat 50. The other one has 1,500
// samples.
struct GhostTest : testing::Test {
    OffscreenScene scene;
    etxyz followed;
    etxyz other;
    Camera camera;
    SceneOptions options;

    GhostTest() {
        fly(followed, 20);
        fly(other, 1500);
        camera.setMode(ViewFree);
        camera.place({500.0F, 0.0F, -75.0F, 1.0F}, {0.0F, 0.0F, -75.0F, 1.0F});
        options.showGrid = false;
        options.showDropLines = false;
        options.time = 1.0;
    }
    // `climb` units a second away from the middle.
    static void fly(etxyz& engagement, int samples, double climb = 0.0) {
        SampleSeries series;
        for (int i = 0; i <= samples; ++i) {
            Sample sample;
            sample.time = 2.0 * i / samples;
            sample.targetPosition = {0.0, 100.0 * (sample.time - 1.0), -100.0 - climb * std::abs(sample.time - 1.0)};
            sample.threatPosition = {0.0, 100.0 * (sample.time - 1.0), -50.0};
            series.add(sample, {});
            engagement.keyframes.insert(sample.time, singlePrecision(sample));
        }
        series.putInOrder();
        engagement.samples = KeptSeries(std::move(series));
        engagement.samples.pack();
    }
    void makeGhost(EngagementId id, double later = 0.0) {
        const auto set = std::make_shared<GhostSet>();
        set->colours = {{1.0F, 0.0F, 0.0F}, {0.0F, 0.0F, 1.0F}};
        set->ghosts[id] = {1, later};
        options.ghosts = set;
    }
    QImage drawOther() { return scene.draw({{kOther, &other, false}}, camera, options); }
    // Of opaque blue, the bodies' points.
    static QRect points(const QImage& picture) {
        QRegion region;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (qBlue(picture.pixel(x, y)) > 200)
                    region += QRect(x, y, 1, 1);
        return region.boundingRect();
    }
};

TEST_F(GhostTest, AGhostHasPathsInItsColourThatShineThroughAndNoOthers) {
    makeGhost(kOther);
    const QImage picture = drawOther();
    EXPECT_EQ(countPixels(picture, [](int r, int g, int) { return r > 0 || g > 0; }), 0);
    const auto isPath = [](int, int, int b) {
        return b > 80 && b < 125; // four tenths of 255
    };
    // Two paths of 200 units, over their whole length and not as far as the clock, less the points.
    EXPECT_NEAR(countPixels(picture, isPath), 2 * 112, 20);
    EXPECT_GT(countPixels(picture.copy(0, 0, 90, 150), isPath), 60);
    EXPECT_EQ(litPixels(scene.draw({{kOther, &other, true}}, camera, options)), 0) << "hidden";
}

TEST_F(GhostTest, ItsBodiesAreWhereTheyAreSoMuchLater) {
    makeGhost(kOther);
    const QRect now = points(drawOther());
    EXPECT_NEAR(now.center().x(), 100, 1);
    makeGhost(kOther, 0.5);
    // Half a second on, 50 units: to the left, seen from +x.
    EXPECT_NEAR(points(drawOther()).center().x(), 100 - 28, 2);
    makeGhost(kOther, -30.0);
    EXPECT_NEAR(points(drawOther()).center().x(), 100 + 56, 2) << "it waits at the start";
    makeGhost(kOther, 30.0);
    EXPECT_NEAR(points(drawOther()).center().x(), 100 - 56, 2) << "and at the end";
}

// A second without samples at the end: 50 units, of which its bodies have done half.
TEST_F(GhostTest, ItsPathEndsWithItsLastSampleAndItsBodiesAreBetweenSamples) {
    Sample last;
    last.time = 3.0;
    last.targetPosition = {0.0, 150.0, -100.0};
    last.threatPosition = {0.0, 150.0, -50.0};
    SampleSeries longer = *other.samples.series();
    longer.add(last, {});
    longer.putInOrder();
    other.samples = KeptSeries(std::move(longer));
    makeGhost(kOther);
    options.time = 2.5;
    const QImage picture = drawOther();
    EXPECT_NEAR(points(picture).center().x(), 100 - 70, 2);
    const QImage beyond = picture.copy(0, 0, 100 - 70 - 4, picture.height());
    EXPECT_NEAR(countPixels(beyond, [](int, int, int b) { return b > 80; }), 2 * 10, 4);
}

TEST_F(GhostTest, TheFollowedOneIsDrawnAsEver) {
    const std::vector<SceneEngagement> one = {{kFollowed, &followed, false}};
    const QImage alone = scene.draw(one, camera, options);
    makeGhost(kOther);
    EXPECT_EQ(scene.draw(one, camera, options), alone);
}

TEST_F(GhostTest, SlicesOfDepthBlendNothingTwice) {
    makeGhost(kOther);
    camera.place({560.0F, -560.0F, -75.0F, 1.0F}, {0.0F, 0.0F, -75.0F, 1.0F}); // from 720 to 860 units away
    const QImage whole = drawOther();
    const EnvironmentVariable slices("SORVANE_DEPTH", "slices");
    OffscreenScene sliced;
    const QImage picture = sliced.draw({{kOther, &other, false}}, camera, options);
    int differing = 0;
    for (int y = 0; y < whole.height(); ++y)
        for (int x = 0; x < whole.width(); ++x)
            differing += qAbs(qBlue(whole.pixel(x, y)) - qBlue(picture.pixel(x, y))) > 8 ? 1 : 0;
    EXPECT_LE(differing, 4);
}

TEST_F(GhostTest, SamplesThatAreReadAgainHaveAnotherPath) {
    makeGhost(kOther);
    const QImage before = drawOther();
    etxyz bent;
    fly(bent, 20, 40.0);
    const auto draw = [&] {
        return scene.draw({{kOther, &bent, false}}, camera, options);
    };
    EXPECT_EQ(points(draw()), points(before)) << "at the clock's time both are at the same places";
    scene.forget(kOther);
    EXPECT_NE(draw(), before);
}
} // namespace
