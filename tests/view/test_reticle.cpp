// The seeker's reticle.
#include <gtest/gtest.h>

#include <cmath>

#include "reticle.h"

using namespace sorvane;

namespace {
const Vector<float> kEye(10.0F, 20.0F, 30.0F, 1.0F);

TEST(Reticle, FacesTheEyeAtATenthOfTheLookDistance) {
    // Looking along +x with z down: right is +y, up is −z; 10 · tan(1°) = 0.174551.
    const Reticle reticle = reticleFor(kEye, Vector<float>(110.0F, 20.0F, 30.0F, 1.0F), 2.0F);
    EXPECT_EQ(reticle.middle, Vector<float>(20.0F, 20.0F, 30.0F, 1.0F));
    for (const Vector<float>& point : reticle.circle) {
        EXPECT_EQ(point.ElementAt(0), 20.0F);
        EXPECT_NEAR(std::hypot(point.ElementAt(1) - 20.0F, point.ElementAt(2) - 30.0F), 0.174551, 1e-4);
    }
    EXPECT_NEAR(reticle.crossEnds[0].ElementAt(1), 20.174551, 1e-4);
    EXPECT_NEAR(reticle.crossEnds[1].ElementAt(1), 19.825449, 1e-4);
    EXPECT_NEAR(reticle.crossEnds[2].ElementAt(2), 29.825449, 1e-4);
    EXPECT_NEAR(reticle.crossEnds[3].ElementAt(2), 30.174551, 1e-4);
}

TEST(Reticle, StaysFiniteWhereRightIsNotDefined) {
    for (const Vector<float>& centre : {kEye, Vector<float>(10.0F, 20.0F, 130.0F, 1.0F)}) {
        const Reticle reticle = reticleFor(kEye, centre, 2.0F);
        for (const Vector<float>& point : reticle.circle)
            for (int i = 0; i < 4; ++i)
                EXPECT_TRUE(std::isfinite(point.ElementAt(i)));
    }
}
} // namespace
