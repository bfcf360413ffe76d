// The bodies of the demonstration drawn as the viewer draws them, with the shaders that come along.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "atmfile.h"
#include "datatree.h"
#include "dynamicdata.h"
#include "glcontext.h"
#include "hardbody.h"
#include "makedemonstration.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
constexpr int kSize = 64;

// Level, seen from above its front at the left, in the world's axes: z points down. The reds of the picture.
std::vector<float> picture(const GlContext& context, Hardbody& body, const AtmFile& atm, float time) {
    const BoxCorners box = body.BBox();
    const float reach = 0.5F * Length(box[6] - box[0]);
    // The eye's axes in world coordinates are its rows: right, up, backwards.
    const float third = 0.57735027F;
    const float half = 0.70710678F;
    const float sixth = 0.40824829F;
    const std::array<float, 16> view = {-half, -sixth,     third,  0, -half, sixth, -third,     0,
                                        0,     -2 * sixth, -third, 0, 0,     0,     -2 * reach, 1};
    glViewport(0, 0, kSize, kSize);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-reach, reach, -reach, reach, 0.0, 4.0 * reach);
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixf(view.data());
    glEnable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    glClearColor(0, 0, 0, 0);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);

    const Vector<float> sun = atm.SolarDirWorld();
    Dynamic_Data data{{0, 0, 0, 0}, time};
    for (int row = 0; row < 3; ++row)
        for (int axis = 0; axis < 3; ++axis)
            data.solarDirEyeCoords.ElementAt(row) +=
                view.at(static_cast<std::size_t>(4 * axis + row)) * sun.ElementAt(axis);
    body.SetWorldPosAndOrientation(0, 0, 0, 180, 0, 0);
    body.UpdateMultiFacet({3 * reach, -3 * reach, -3 * reach, 1});
    body.Render(&data);

    const std::vector<float> pixels = context.pixels();
    std::vector<float> reds;
    for (std::size_t i = 0; i < pixels.size(); i += 4)
        reds.push_back(pixels[i]);
    return reds;
}

struct Files {
    std::string reflectance;
    std::string geometry;
    std::string radiance;
};

class BodyDrawing : public testing::Test {
protected:
    void SetUp() override {
        if (!context_.isUsable())
            GTEST_SKIP() << "no OpenGL without a window here";
        ASSERT_EQ(makeDemonstration(directory_.path()), std::nullopt);
        ASSERT_TRUE(atm_.Load(root_ + kAtmosphere));
    }

    // Messages fail the test.
    bool init(Hardbody& body, const Files& files, const std::string& rotors, bool perFrameUpload) {
        testing::internal::CaptureStderr();
        const bool isUsable = body.Init(
            root_ + files.reflectance, root_ + files.geometry, root_ + files.radiance, root_ + "openglshaders/", rotors,
            true, true, true, !rotors.empty(), perFrameUpload, 0, 0, 0, 0, 0, 0, 3000, atm_.diffuseEarthRadiance(),
            atm_.diffuseSkyRadiance(), atm_.directSolarRadiance());
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        return isUsable;
    }

    const TemporaryDirectory directory_;
    const std::string root_ = directory_.file("data/");
    AtmFile atm_;
    const GlContext context_{kSize, kSize};
};
} // namespace

TEST_F(BodyDrawing, ShowsEveryBodyInGreysThatAreNeitherDarkNorWashedOut) {
    for (const Files& files : std::vector<Files>{
             {kTargetReflectance, kTargetGeometry, kTargetSignature},
             {kHelicopterReflectance, kHelicopterGeometry, kHelicopterSignature},
             {"tgt0450/tgt0450_b0001.brdf", "tgt0450/tgt0450.vnl", "tgt0450/tgt0450_b0001.rad"},
             {"tgt0450/tgt0450_b0006.brdf", "tgt0450/tgt0450.vnl", "tgt0450/tgt0450_b0006.rad"},
             {"tgt0451/tgt0451_b0004.brdf", "tgt0451/tgt0451.vnl", "tgt0451/tgt0451_b0004.rad"}}) {
        SCOPED_TRACE(files.radiance);
        Hardbody body;
        ASSERT_TRUE(init(body, files, "", false));
        std::vector<float> greys = picture(context_, body, atm_, 0.0F);
        std::erase(greys, 0.0F);
        EXPECT_GT(greys.size(), 100U) << "of 4096 pixels";
        std::ranges::sort(greys);
        EXPECT_GT(greys[greys.size() / 20], 0.1F);
        EXPECT_TRUE(greys[greys.size() / 2] > 0.2F && greys[greys.size() / 2] < 0.7F) << greys[greys.size() / 2];
        EXPECT_LT(greys[greys.size() * 4 / 5], 1.0F);
    }
}

TEST_F(BodyDrawing, TurnsTheHelicoptersRotors) {
    Hardbody body;
    const Files files = {kHelicopterReflectance, kHelicopterGeometry, kHelicopterSignature};
    ASSERT_TRUE(init(body, files, root_ + kHelicopterRotors, true));
    const auto atStart = picture(context_, body, atm_, 0.0F);
    EXPECT_EQ(picture(context_, body, atm_, 0.0F), atStart);
    EXPECT_NE(picture(context_, body, atm_, 0.02F), atStart);
}
