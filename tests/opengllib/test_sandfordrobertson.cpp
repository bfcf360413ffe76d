// The reflectance model against values worked out separately in double precision, and the properties that it promises.
#include "sandfordrobertson.h"

#include <bit>
#include <cmath>
#include <numbers>
#include <random>

#include "bodyfiles.h"
#include "brdffile.h"
#include "plainbrdf.h"
#include "rows.h"

using namespace sorvane;

namespace {
constexpr double kRadians = std::numbers::pi / 180.0;

// A unit direction at an angle from the z axis, which is the surface normal, and an azimuth; in degrees.
Vector<float> direction(double angle, double azimuth) {
    const double a = angle * kRadians;
    const double p = azimuth * kRadians;
    return {
        static_cast<float>(std::sin(a) * std::cos(p)), static_cast<float>(std::sin(a) * std::sin(p)),
        static_cast<float>(std::cos(a)), 0.0F};
}

struct Surface {
    float b, e, rho_d, epsilon;

    float G() const {
        BrdfFile file;
        EXPECT_TRUE(file.parse("BRDF\n1\n0 0 " + std::to_string(b) + " 0 0 x\n"));
        return file.classes()[0].G;
    }
};

float reflectance(
    int mode, const Surface& surface, float G, const Vector<float>& toSource, const Vector<float>& toViewer) {
    const Vector<float> sum = toSource + toViewer;
    return sr_brdf_internal(
        mode, {0, 0, 1, 0}, toSource, toViewer, surface.b, surface.e, surface.rho_d, surface.epsilon, G,
        sum / Length(sum));
}
} // namespace

TEST(SandfordRobertson, GivesTheValuesOfTheFormula) {
    for (const auto& [mode, source, viewer, azimuth, surface, expected] :
         Rows<int, double, double, double, Surface, float>{
             {0, 0, 0, 0, {0.0F, 0.3F, 0.2F, 0.5F}, 0.35279346F},
             {0, 30, 30, 180, {0.25F, 0.2F, 0.1F, 0.6F}, 0.62286998F},
             {0, 30, 31, 180, {0.25F, 0.05F, 0.1F, 0.6F}, 8.5986506F},
             {0, 60, 20, 45, {0.5F, 0.4F, 0.3F, 0.3F}, 0.1655918F},
             {0, 75, 85, 180, {0.5F, 0.3F, 0.2F, 0.4F}, 6.3629111F},
             {0, 75, 85, 180, {0.0F, 0.3F, 0.2F, 0.4F}, 11.713168F},
             {1, 10, 79.5, 90, {2.0F, 0.3F, 0.2F, 0.1F}, 0.016936511F},
             {2, 40, 50, 10, {0.7F, 0.3F, 0.25F, 0.4F}, 0.091666874F},
             {2, 40, 50, 10, {0.0F, 0.3F, 0.25F, 0.4F}, 0.079577472F},
             {3, 40, 50, 10, {0.7F, 0.3F, 0.25F, 0.4F}, 0.21662896F},
             {3, 40, 50, 10, {0.0F, 0.3F, 0.25F, 0.4F}, 0.35F},
             {0, 20, 20, 180, {0.3F, 0.1F, 0.9F, 0.3F}, 0.39915361F}, // nothing left for the specular term
             {0, 90, 10, 0, {0.3F, 0.1F, 0.1F, 0.1F}, 0.0F},
             {0, 10, 95, 0, {0.3F, 0.1F, 0.1F, 0.1F}, 0.0F}}) {
        const float value = reflectance(mode, surface, surface.G(), direction(source, 0), direction(viewer, azimuth));
        EXPECT_NEAR(value, expected, 1e-4F * expected) << mode << ": " << source << ", " << viewer << ", " << azimuth;
    }
}

TEST(SandfordRobertson, RoundsEveryStepAsTheFormulasDo) {
    std::mt19937 random(11);
    std::uniform_real_distribution<float> unit(0.0F, 1.0F);
    const auto randomDirection = [&] {
        return direction(static_cast<double>(100.0F * unit(random)), static_cast<double>(360.0F * unit(random)));
    };
    for (int i = 0; i < 20000; ++i) {
        const Vector<float> normal = randomDirection();
        const Vector<float> toSource = randomDirection();
        const Vector<float> toViewer = randomDirection();
        const Vector<float> glint = (toSource + toViewer) / Length(toSource + toViewer);
        const float b = i % 3 == 0 ? -0.5F * static_cast<float>(i % 2) : 1.5F * unit(random);
        const float e = i % 17 == 0 ? 0.0F : unit(random);
        const float rho_d = 0.6F * unit(random);
        const float epsilon = 0.6F * unit(random);
        const float G = 0.2F + unit(random);
        const int mode = i % 5;
        ASSERT_EQ(
            std::bit_cast<std::uint32_t>(
                sr_brdf_internal(mode, normal, toSource, toViewer, b, e, rho_d, epsilon, G, glint)),
            std::bit_cast<std::uint32_t>(plainBrdf(mode, normal, toSource, toViewer, b, e, rho_d, epsilon, G, glint)))
            << i;
    }
}

TEST(SandfordRobertson, ComponentTermsStayFinite) {
    EXPECT_EQ(sr_big_h(0.0F, 0.5F, 0.25F), 1.0F);
    EXPECT_EQ(sr_big_h(-1.0F, 1.0F, 0.0F), 1.0F);
    // At normal incidence m = 1 + a², X = (1 + a)², H = (1 − a + (1 + a²) / (1 + a)) / 2a = 1 / (a (1 + a)).
    EXPECT_NEAR(sr_big_h(0.25F, 1.0F, 1.0F), 3.2F, 1e-5F);
    EXPECT_EQ(small_hcal(1.0F, 0.0F), 1.7e38F);
    EXPECT_EQ(small_hcal(1.0F, -1.0F), 1.7e38F);
    EXPECT_EQ(small_hcal(1.0F, 1e-20F), 1.7e38F);
    EXPECT_NEAR(small_hcal(0.5F, 0.5F), 16.0F / 9.0F, 1e-5F);
}

TEST(SandfordRobertson, DirectionsWithAPositionsWEndTheProcess) {
    const Vector<float> up(0, 0, 1, 0);
    const Vector<float> position(0, 0, 1, 0.5F);
    EXPECT_EXIT(
        sr_brdf_internal(0, position, up, up, 0, 0, 0, 0, 1, position), testing::ExitedWithCode(1),
        "\"sr_brdf_internal\" .*: normal\\[3\\] should be 0 but is 0.500000\\.\n$");
    EXPECT_EXIT(
        sr_brdf_internal(0, up, up, up, 0, 0, 0, 0, 1, position), testing::ExitedWithCode(1),
        "\"sr_brdf_internal\" .*: glint_vec\\[3\\] should be 0 but is 0.500000\\.\n$");
}
