// What a radiance picture adds up to, against what bodies and flares radiate, and its values against the library's.
#include <gtest/gtest.h>

#include "glapi.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numbers>
#include <random>
#include <string>

#include "atmosphere.h"
#include "bodies.h"
#include "environmentvariable.h"
#include "makedemonstration.h"
#include "nestedbody.h"
#include "pixelplane.h"
#include "radbytes.h"
#include "radianceframe.h"
#include "radiancescene.h"
#include "rows.h"
#include "sandfordrobertson.h"
#include "scenepicture.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
constexpr double kPi = std::numbers::pi;

TEST_F(RadianceFrameTest, WhatAPlateRadiatesAddsUpAtAnyDistanceAndSize) {
    constexpr double kRadiance = 2.5e-4;
    for (const auto& [distance, width, height, turn, pixels, right, down] :
         Rows<double, double, double, float, int, double, double>{
             {100.0, 6.0, 4.0, 0.0F, 32, 0.0, 0.0},
             {100.0, 6.0, 0.3, 40.0F, 32, 0.5, -0.3},
             {100.0, 6.0, 4.0, 60.0F, 256, -0.2, 0.4},
             {100.0, 6.0, 4.0, 20.0F, 1024, 0.0, 0.1},
             {700.0, 3.0, 0.25, -35.0F, 64, 0.21, 0.77},
             {3000.0, 12.0, 2.0, 75.0F, 128, 0.7, -0.7},
             {3000.0, 0.4, 0.4, 0.0F, 1024, -0.9, 0.9},
             {20000.0, 12.0, 2.0, 30.0F, 32, 0.4, 0.1},
             {20000.0, 0.3, 0.2, 10.0F, 32, -0.8, -0.9},
             {20000.0, 0.3, 0.2, 0.0F, 1024, 0.3, 0.6}}) {
        SCOPED_TRACE(testing::Message() << distance << " units, " << pixels << " pixels, plate " << width);
        place(0, {plate(width, height), kRadiance, "0.2 0.5 0 0.3 0 x", {}}, kPlace, turn);
        request.width = request.height = pixels;
        request.background = 1e-5F;
        const double expected =
            (kRadiance - double{request.background}) * width * height * 1e4 * std::cos(turn * kPi / 180.0);
        EXPECT_NEAR(intensityAt(distance, draw(cameraBeside(distance, right, down))) / expected, 1.0, 0.005);
    }
}

TEST_F(RadianceFrameTest, AFlareRadiatesItsIntensityWhateverItsSize) {
    constexpr float kIntensity = 850.0F;
    for (const auto& [distance, halfAxes, pixels, right, down] :
         Rows<double, std::array<float, 3>, int, double, double>{
             {100.0, {4.0F, 4.0F, 4.0F}, 64, 0.0, 0.0},
             {100.0, {4.0F, 1.0F, 0.5F}, 256, 0.3, 0.2},
             {100.0, {30.0F, 0.2F, 30.0F}, 64, -0.1, 0.0},
             {800.0, {0.5F, 0.5F, 0.5F}, 32, -0.6, 0.7},
             {5000.0, {0.0F, 0.0F, 0.0F}, 128, 0.31, -0.4},
             {20000.0, {0.3F, 0.3F, 0.3F}, 32, 0.8, 0.1}}) {
        SCOPED_TRACE(testing::Message() << distance << " units, " << pixels << " pixels");
        placeFlare(kPlace, kIntensity, halfAxes);
        request.width = request.height = pixels;
        const RadiancePicture picture = draw(cameraBeside(distance, right, down));
        EXPECT_NEAR(intensityAt(distance, picture) / double{kIntensity}, 1.0, 0.01);
    }
    // Resolved, a sphere shows its intensity over π · radius²: 850 / (π · 400² cm²); in feet fewer square centimetres.
    placeFlare(kPlace, kIntensity, {4.0F, 4.0F, 4.0F});
    request.width = request.height = 65;
    const auto middle = [&] {
        return draw(cameraBeside(100.0, 0.0, 0.0)).radiances[32 * 65 + 32];
    };
    EXPECT_NEAR(middle(), 1.69102e-3F, 1e-7F);
    request.flareUnits.centimetres = kCentimetresPerFoot;
    EXPECT_NEAR(middle(), 1.82020e-2F, 1e-6F);
}

TEST_F(RadianceFrameTest, WhatSharesAPixelAddsUpAndHides) {
    // Both in one pixel of 83 units' width, beside each other; then the flare behind the plate.
    place(0, {plate(12.0, 12.0), 1e-4, "0.2 0.5 0 0.3 0 x", {}}, kPlace);
    const double ofPlate = 1e-4 * 144.0 * 1e4;
    request.width = request.height = 32;
    const auto flareAt = [&](float x, float y, float radius = 0.5F) {
        placeFlare({kPlace[0] + x, kPlace[1] + y, kPlace[2]}, 500.0F, {radius, radius, radius});
        return intensityAt(5000.0, draw(cameraBeside(5000.0, 0.33, 0.21)));
    };
    EXPECT_NEAR(flareAt(0.0F, 20.0F), ofPlate + 500.0, 5.0) << "beside";
    EXPECT_NEAR(flareAt(3.0F, 5.0F), ofPlate + 500.0, 5.0) << "before, where it hides less than a part in 100";
    EXPECT_NEAR(flareAt(-3.0F, 5.0F), ofPlate, 1.5) << "behind";
    const double hidden = std::numbers::pi * 25.0 * 1e4 * 1e-4;
    EXPECT_NEAR(flareAt(6.0F, 0.0F, 5.0F), ofPlate - hidden + 500.0, 5.0) << "before, where it hides half of the plate";
}

TEST_F(RadianceFrameTest, ABodyInABoxOfItsOwnRadianceIsInvisible) {
    constexpr double kRadiance = 3.3e-4;
    place(0, {box(50.0, true), kRadiance, "0.2 0.5 0 0.3 0 x", {}}, kPlace);
    place(1, {box(2.0, false), kRadiance, "0.2 0.5 0 0.3 0 x", {}}, kPlace, 33.0F);
    request.background = 1.0F;
    for (const double distance : {9.0, 45.0}) {
        const RadiancePicture picture = draw(cameraBeside(distance, 0.1, 0.2));
        const auto [least, most] = std::ranges::minmax(picture.radiances);
        EXPECT_NEAR(least / kRadiance, 1.0, 1e-4) << distance;
        EXPECT_NEAR(most / kRadiance, 1.0, 1e-4) << distance;
    }
}

// A plate that fills the picture, in every pose, class, light and sun, against the model's own functions.
TEST_F(RadianceFrameTest, BodiesHaveTheRadianceThatTheLibraryWorksOut) {
    std::mt19937 random(20);
    const auto any = [&random](double from, double to) {
        return std::uniform_real_distribution(from, to)(random);
    };
    request.width = request.height = 5;
    request.fieldOfViewDegrees = 0.002;
    double worst = 0.0;
    int sunlit = 0;
    for (int trial = 0; trial < 200; ++trial) {
        const double emissivity = any(0.1, 0.8);
        const double diffuse = any(0.02, 0.9 - emissivity);
        const double directional = trial % 4 == 0 ? 0.0 : any(0.05, 0.9);
        const double lobe = any(0.15, 0.6);
        PlainBody plain{plate(40.0, 40.0), any(1e-5, 1e-3), "", {}};
        for (const double value : {diffuse, emissivity, directional, lobe})
            plain.reflectance += std::to_string(value) + ' ';
        plain.reflectance += "0 x";
        plain.light = {
            static_cast<float>(any(0.0, 1e-3)), static_cast<float>(any(0.0, 1e-3)), static_cast<float>(any(0.0, 1e-2)),
            3000.0F};
        const double turn = any(-70.0, 70.0);
        place(0, plain, kPlace, static_cast<float>(turn));
        auto atmosphere = std::make_unique<AtmFile>();
        ASSERT_TRUE(atmosphere->parse(atmosphereText({any(0.0, 90.0), any(0.0, 180.0), 1.0, 2.0, 3.0, 0.0})));
        engagements[0].atm = std::move(atmosphere);
        const double tilt = any(-0.3, 0.3);
        const Vector<float> toEye(1.0F, 0.0F, static_cast<float>(tilt), 0.0F);
        const Vector<float> centre(kPlace[0], kPlace[1], kPlace[2], 1.0F);
        const RadiancePicture picture = draw(cameraAt(centre + toEye / 0.002F, centre));

        const Vector<float> toViewer = toEye / Length(toEye);
        const auto angle = static_cast<float>(turn * kPi / 180.0);
        const Vector<float> normal(std::cos(angle), std::sin(angle), 0.0F, 0.0F);
        const Vector<float> toSun = engagements[0].atm->SolarDirWorld();
        const auto dot = [](const Vector<float>& a, const Vector<float>& b) {
            return a.ElementAt(0) * b.ElementAt(0) + a.ElementAt(1) * b.ElementAt(1) + a.ElementAt(2) * b.ElementAt(2);
        };
        const BrdfClass& surface = engagements[0].target->model()->parts().brdf.classes()[0];
        Vector<float> glint = toSun + toViewer;
        glint = glint / Length(glint);
        const double cosViewer = dot(normal, toViewer);
        const double tangent2 = (1.0 - cosViewer * cosViewer) / (cosViewer * cosViewer);
        const double emitted = double{surface.epsilon} / (1.0 + double{surface.b} * surface.b * tangent2) / surface.G;
        double expected = static_cast<float>(1e6 * plain.radiance) * 1e-6;
        expected += kPi * double{plain.light.solarBeam} * std::max(dot(normal, toSun), 0.0F) *
                    sr_brdf_internal(
                        surface.mode, normal, toSun, toViewer, surface.b, surface.e, surface.rho_d, surface.epsilon,
                        surface.G, glint);
        expected +=
            (double{plain.light.earthRadiance} + double{plain.light.skyRadiance}) * std::max(1.0 - emitted, 0.0);
        sunlit += dot(normal, toSun) > 0.0F ? 1 : 0;
        worst = std::max(worst, std::abs(picture.radiances[12] / expected - 1.0));
    }
    EXPECT_LT(worst, 1e-4);
    EXPECT_GT(sunlit, 60);
}

TEST_F(RadianceFrameTest, LeavesTheWindowsPictureAndItsStateAsTheyWere) {
    place(0, {plate(6.0, 6.0), 2e-4, "0.2 0.5 0 0.3 0 x", {4e-5F, 2e-5F, 1e-4F, 3000.0F}}, kPlace);
    placeFlare({kPlace[0], kPlace[1] + 8.0F, kPlace[2]}, 50.0F, {1.0F, 1.0F, 1.0F});
    const Camera camera = cameraBeside(100.0, 0.0, 0.0);
    const auto window = [&] {
        return scene.draw({{EngagementId{1}, &engagements[0]}, {EngagementId{2}, &engagements[1]}}, camera, {});
    };
    const QImage before = window();
    const RadiancePicture first = draw(camera);
    EXPECT_EQ(window(), before);
    EXPECT_EQ(draw(camera).radiances, first.radiances) << "the same again";
}

// The demonstration's engagement over its ground, in the window's greys and in radiances.
TEST(RadianceOfTheDemonstration, IsWhatTheWindowsGreysAreMadeOf) {
    const TemporaryDirectory folder;
    const EnvironmentVariable dataRoot("PELSAR_DATA", (folder.path() / "data/").string());
    ASSERT_FALSE(makeDemonstration(folder.path()).has_value());
    constexpr int kWidth = 160;
    constexpr int kHeight = 120;
    OffscreenScene scene(kWidth, kHeight);
    etxyz engagement;
    engagement.LoadETXYZ(QString::fromStdString((folder.path() / "ETXYZ.OUT.turn").string()));
    engagement.InitHardbodies();
    const keyframe state = engagement.InterpolatedFrame(3.0);
    const auto& [x, y, z] = state.targetPos;
    const Camera camera = cameraAt({x + 20.0F, y + 3.0F, z - 12.0F, 1.0F}, {x, y, z, 1.0F});
    const std::vector<SceneEngagement> shown = {{EngagementId{1}, &engagement}};
    testing::internal::CaptureStdout(); // what loading the ground says
    const QImage greys = scene.draw(
        shown, camera,
        {.showTerrain = true, .showHistoryLines = false, .showDropLines = false, .showGrid = false, .time = 3.0});
    RadianceFrame frame;
    const auto picture =
        frame.draw(shown, camera, {.width = kWidth, .height = kHeight, .time = 3.0, .showTerrain = true});
    testing::internal::GetCapturedStdout();
    ASSERT_TRUE(picture.has_value());
    int lit = 0;
    int alike = 0;
    for (int row = 0; row < kHeight; ++row)
        for (int column = 0; column < kWidth; ++column) {
            const int grey = qGreen(greys.pixel(column, row));
            const double radiance = picture->radiances[static_cast<std::size_t>(row * kWidth + column)];
            lit += grey > 0 ? 1 : 0;
            alike += std::abs(255.0 * std::min(3000.0 * radiance, 1.0) - grey) <= 3.0 ? 1 : 0;
        }
    EXPECT_GT(lit, kWidth * kHeight / 2);
    // Edges of facets are means in radiances only.
    EXPECT_GT(alike, kWidth * kHeight * 9 / 10);
}

TEST(PixelPlane, SolidAnglesAddUpToTheSphere) {
    // Six faces of a cube; then the pixels of a wide picture against the closed form of the whole.
    EXPECT_NEAR(solidAngleOf({-1.0, 1.0, -1.0, 1.0}), 4.0 * kPi / 6.0, 1e-12);
    const PixelPlane plane(60.0, 30, 20);
    double sum = 0.0;
    for (int row = 0; row < 20; ++row)
        for (int column = 0; column < 30; ++column)
            sum += plane.solidAngleOf(column, row);
    // 4 asin(sin α sin β) with the half angles tan α = 1.5 tan 30°, β = 30°, each about the other axis.
    const double alpha = std::atan(1.5 * std::tan(kPi / 6.0));
    EXPECT_NEAR(sum, 4.0 * std::asin(std::sin(alpha) * std::sin(kPi / 6.0)), 1e-12);
    // Off the axis by θ a pixel has cos³θ of what it has in the middle.
    const double cosine = 1.0 / std::sqrt(1.0 + std::pow(14.5 * plane.pitch(), 2) + std::pow(9.5 * plane.pitch(), 2));
    EXPECT_NEAR(plane.solidAngleOf(29, 0) / plane.centreSolidAngle(), std::pow(cosine, 3), 1e-3);
}
} // namespace
