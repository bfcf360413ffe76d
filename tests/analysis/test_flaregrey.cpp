// The greys of flares in the view as it starts.
#include "flaregrey.h"

#include <gtest/gtest.h>

#include "rows.h"

using namespace sorvane;

namespace {
Flare flare(int id, double brightness, double a, double b, double c) {
    Flare made;
    made.id = id;
    made.brightness = brightness;
    made.halfAxes = {a, b, c};
    return made;
}
} // namespace

// By hand: (R · 895.6922)² / 4 is 5,014,153 for R = 5 and 802,265 for R = 2; a pixel is 0.0630 units wide at 100 units.
TEST(FlareGrey, IsTheBrightnessOverTheSquareOfTheSize) {
    for (const auto& [brightness, a, b, c, grey, white] : Rows<double, double, double, double, double, double>{
             {50000.0, 5, 5, 5, 0.0099718, 5014153.2},
             {50000.0, 2, 2, 2, 0.0623236, 802264.5},
             {50000.0, 1, -5, 2, 0.0099718, 5014153.2},
             {1e7, 5, 5, 5, 1.0, 5014153.2},
             {-1.0, 5, 5, 5, 0.0, 5014153.2},
             {100.0, 0.05, 0.05, 0.05, 0.1256637, 795.7747},
             {100.0, 0, 0, 0, 0.1256637, 795.7747}}) {
        EXPECT_NEAR(startViewGrey(flare(1, brightness, a, b, c)), grey, 1e-6) << brightness << ' ' << a;
        EXPECT_NEAR(brightnessOfWhite(flare(1, brightness, a, b, c)), white, 1e-6 * white) << a;
    }
}

TEST(FlareGrey, OfEachFlareTheBrightestSampleCounts) {
    BrightestFlares flares;
    EXPECT_FALSE(flares.brightest().has_value());
    const auto at = [](int id, double brightness) {
        return flare(id, brightness, 5, 5, 5);
    };
    for (const std::vector<Flare>& sample : std::vector<std::vector<Flare>>{
             {at(7, 1e5), at(3, 4e5)}, {at(3, 2e5)}, {at(3, 3e5), at(7, 2e5)}, {}, {at(7, 1e5)}})
        flares.include(sample);
    ASSERT_EQ(flares.byId().size(), 2U);
    EXPECT_EQ(flares.byId().at(3).at.brightness, 4e5);
    EXPECT_EQ(flares.byId().at(7).at.brightness, 2e5);
    EXPECT_EQ(flares.brightest()->at.id, 3);
}
