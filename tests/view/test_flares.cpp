// How a flare shows on the screen.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "flares.h"

using namespace sorvane;

namespace {
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

TEST(FlareLook, IsASphereAbovePixelSizeAndAPointBelow) {
    struct Row {
        const char* what;
        float scalar;
        double distance;
        double area;
        double grey;
        double alpha;
        bool isSphere;
    };
    const Row rows[] = {
        // 4π · 1000 / 200² = 0.314159
        {"sphere: irradiance over area", 1000.0F, 200.0, 2.0, 0.157080, 1.0, true},
        {"larger sphere, darker", 1000.0F, 200.0, 10.0, 0.0314159, 1.0, true},
        {"exactly one pixel is a point", 1000.0F, 200.0, 1.0, 0.314159, 1.0, false},
        {"far away: alpha is the area", 1000.0F, 200.0, 0.25, 0.314159, 0.25, false},
        {"too bright is white", 1.0e9F, 200.0, 2.0, 1.0, 1.0, true},
        {"negative brightness is black", -1000.0F, 200.0, 2.0, 0.0, 1.0, true},
        {"eye inside the flare", 1000.0F, 0.0, 50.0, 1.0, 1.0, true},
        {"dark flare at the eye", 0.0F, 0.0, 50.0, 0.0, 1.0, true},
        {"infinitely far", 1000.0F, kInfinity, 0.0, 0.0, 0.0, false},
        {"nowhere", 1000.0F, kNan, kNan, 0.0, 0.0, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        const FlareLook look = flareLook(row.scalar, row.distance, row.area);
        EXPECT_NEAR(look.grey, row.grey, 1e-5);
        EXPECT_NEAR(look.alpha, row.alpha, 1e-6);
        EXPECT_EQ(look.isSphere, row.isSphere);
    }
}
} // namespace
