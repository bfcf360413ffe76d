// How a flare shows on the screen.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "flares.h"
#include "rows.h"

using namespace sorvane;

namespace {
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(FlareLook, IsASphereAbovePixelSizeAndAPointBelow) {
    for (const auto& [what, scalar, distance, area, grey, alpha, isSphere] :
         Rows<const char*, float, double, double, double, double, bool>{
             // 4π · 1000 / 200² = 0.314159
             {"sphere: irradiance over area", 1000.0F, 200.0, 2.0, 0.157080, 1.0, true},
             {"exactly one pixel is a point", 1000.0F, 200.0, 1.0, 0.314159, 1.0, false},
             {"far away: alpha is the area", 1000.0F, 200.0, 0.25, 0.314159, 0.25, false},
             {"too bright is white", 1.0e9F, 200.0, 2.0, 1.0, 1.0, true},
             {"negative brightness is black", -1000.0F, 200.0, 2.0, 0.0, 1.0, true},
             {"eye inside the flare", 1000.0F, 0.0, 50.0, 1.0, 1.0, true},
             {"dark flare at the eye", 0.0F, 0.0, 50.0, 0.0, 1.0, true},
             {"infinitely far", 1000.0F, kInfinity, 0.0, 0.0, 0.0, false},
             {"nowhere", 1000.0F, kNan, kNan, 0.0, 0.0, false}}) {
        SCOPED_TRACE(what);
        const FlareLook look = flareLook(scalar, distance, area);
        EXPECT_NEAR(look.grey, grey, 1e-5);
        EXPECT_NEAR(look.alpha, alpha, 1e-6);
        EXPECT_EQ(look.isSphere, isSphere);
    }
}
} // namespace
