// Far from the world's origin the scene looks as it does at the origin.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "environmentvariable.h"
#include "lookat.h"
#include "makedemonstration.h"
#include "pixels.h"
#include "scene.h"
#include "scenepicture.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
constexpr double kTime = 1.0;

// A target that flies along y past a threat that closes in along x, with a burning flare; every coordinate is a
// multiple of 1/16, which single precision holds exactly a million units away too. `shift` moves all of it.
void fill(etxyz& engagement, const Vertex& shift) {
    for (int i = 0; i <= 32; ++i) {
        const auto step = static_cast<float>(i);
        keyframe sample;
        sample.time = i / 16.0;
        const Vertex target = {3.0F, 12.0F * (step - 16.0F) / 16.0F, -40.0F - step / 16.0F};
        const Vertex threat = {5.0F * (step - 24.0F), 0.8125F, -39.0F + 0.125F * step};
        const Vertex flare = {1.0F, 2.5F - step / 8.0F, -40.0F + step / 16.0F};
        flareKeyframe burning;
        std::fill_n(burning.intensity, 3, 0.5F);
        burning.scalar = 2000.0F;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            sample.targetPos[axis] = target[axis] + shift[axis];
            sample.threatPos[axis] = threat[axis] + shift[axis];
            burning.pos[axis] = flare[axis] + shift[axis];
        }
        sample.targetAtt[2] = 90.0F;
        sample.threatAtt[2] = 60.0F;
        sample.threatAtt[1] = sample.gyro[1] = 4.0F;
        sample.gyro[2] = 3.0F;
        sample.flares = {burning};
        engagement.keyframes.insert(sample.time, sample);
    }
}

CameraSubject subjectOf(const keyframe& frame) {
    CameraSubject subject;
    std::copy_n(frame.threatPos, 3, subject.threatPosition);
    std::copy_n(frame.targetPos, 3, subject.targetPosition);
    std::copy_n(frame.gyro, 3, subject.gyroAngles);
    return subject;
}

// An engagement that is drawn with the demonstration's bodies and atmosphere.
struct PrecisionTest : testing::Test {
    TemporaryDirectory folder;
    EnvironmentVariable dataRoot{"PELSAR_DATA", (folder.path() / "data/").string()};
    OffscreenScene scene{400, 300};

    PrecisionTest() { EXPECT_FALSE(sorvane::makeDemonstration(folder.path()).has_value()); }
    std::unique_ptr<etxyz> engagementAt(const Vertex& shift) const {
        auto engagement = std::make_unique<etxyz>();
        engagement->LoadETXYZ(QString::fromStdString((folder.path() / "ETXYZ.OUT.turn").string()));
        engagement->InitHardbodies();
        engagement->keyframes.clear();
        fill(*engagement, shift);
        return engagement;
    }
    QImage draw(etxyz& engagement, ViewMode mode) {
        Camera camera;
        camera.setMode(mode);
        const CameraSubject first = subjectOf(engagement.InterpolatedFrame(0.0));
        camera.reset(first);
        camera.follow(first, subjectOf(engagement.InterpolatedFrame(kTime)));
        const SceneOptions options{.showDropLines = false, .showGrid = false, .time = kTime};
        return scene.draw({{newEngagementId(), &engagement}}, camera, options, mode == ViewGyro ? 15.0 : 30.0);
    }
};

TEST_F(PrecisionTest, AMillionUnitsAwayEveryViewLooksAsAtTheOrigin) {
    const std::unique_ptr<etxyz> near = engagementAt({});
    const std::unique_ptr<etxyz> far = engagementAt({1.0e6F, 0.0F, 0.0F});
    const std::unique_ptr<etxyz> farther = engagementAt({-1.0e6F, 1.0e6F, -1.0e6F});
    for (const ViewMode mode : {ViewThreat, ViewGyro, ViewTarget}) {
        const QImage atOrigin = draw(*near, mode);
        EXPECT_GT(litPixels(atOrigin), 200) << "mode " << mode;
        for (etxyz* const shifted : {far.get(), farther.get()}) {
            const QImage picture = draw(*shifted, mode);
            EXPECT_TRUE(picture == atOrigin) << "mode " << mode;
            if (picture != atOrigin) {
                atOrigin.save(QStringLiteral("precision_origin_%1.png").arg(mode));
                picture.save(QStringLiteral("precision_far_%1.png").arg(mode));
            }
        }
    }
}

TEST(LookAt, PutsPointsWhereTheCameraSeesThem) {
    Camera camera;
    // Along +x with z down: y is to the right.
    camera.place({1.0e6F, 20.0F, 30.0F, 1.0F}, {1.0e6F + 8.0F, 20.0F, 30.0F, 1.0F});
    const LookAt lookAt(camera);
    const Vertex origin = {1.0e6F + 4.0F, 22.0F, 25.0F};
    const Vector<float> inEye = lookAt.modelView(origin) * Vector<float>(0.0625F, 0.0F, 0.0F, 1.0F);
    EXPECT_EQ(inEye, Vector<float>(2.0F, 5.0F, -4.0625F, 1.0F));
}
} // namespace
