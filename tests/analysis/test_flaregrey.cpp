// The greys of flares in the view as it starts.
#include "flaregrey.h"

#include <gtest/gtest.h>

#include "rows.h"

using namespace sorvane;

namespace {
flareKeyframe flare(int id, float brightness, float a, float b, float c) {
    flareKeyframe made;
    made.id = id;
    made.scalar = brightness;
    made.intensity[0] = a;
    made.intensity[1] = b;
    made.intensity[2] = c;
    return made;
}
} // namespace

// By hand: (R · 895.6922)² / 4 is 5,014,153 for R = 5 and 802,265 for R = 2; a pixel is 0.0630 units wide at 100 units.
TEST(FlareGrey, IsTheBrightnessOverTheSquareOfTheSize) {
    for (const auto& [brightness, a, b, c, grey, white] : Rows<float, float, float, float, double, double>{
             {50000.0F, 5, 5, 5, 0.0099718, 5014153.2},
             {50000.0F, 2, 2, 2, 0.0623236, 802264.5},
             {50000.0F, 1, -5, 2, 0.0099718, 5014153.2},
             {1e7F, 5, 5, 5, 1.0, 5014153.2},
             {-1.0F, 5, 5, 5, 0.0, 5014153.2},
             {100.0F, 0.05F, 0.05F, 0.05F, 0.1256637, 795.7747},
             {100.0F, 0, 0, 0, 0.1256637, 795.7747}}) {
        EXPECT_NEAR(startViewGrey(flare(1, brightness, a, b, c)), grey, 1e-6) << brightness << ' ' << a;
        EXPECT_NEAR(brightnessOfWhite(flare(1, brightness, a, b, c)), white, 1e-6 * white) << a;
    }
}

TEST(FlareGrey, OfEachFlareTheBrightestSampleCounts) {
    BrightestFlares flares;
    EXPECT_FALSE(flares.brightest().has_value());
    const auto at = [](int id, float brightness) {
        return flare(id, brightness, 5, 5, 5);
    };
    for (const std::vector<flareKeyframe>& sample : std::vector<std::vector<flareKeyframe>>{
             {at(7, 1e5F), at(3, 4e5F)}, {at(3, 2e5F)}, {at(3, 3e5F), at(7, 2e5F)}, {}, {at(7, 1e5F)}})
        flares.include(sample);
    ASSERT_EQ(flares.byId().size(), 2U);
    EXPECT_EQ(flares.byId().at(3).at.scalar, 4e5F);
    EXPECT_EQ(flares.byId().at(7).at.scalar, 2e5F);
    EXPECT_EQ(flares.brightest()->at.id, 3);
}
