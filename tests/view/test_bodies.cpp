// The shaded bodies in the scene, from the demonstration's own files.
#include <gtest/gtest.h>

#include <filesystem>

#include "environmentvariable.h"
#include "makedemonstration.h"
#include "pixels.h"
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
} // namespace
