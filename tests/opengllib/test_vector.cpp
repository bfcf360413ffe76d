// Four-component vectors: the checked index, division, cross product and length.
#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "vector.h"

using namespace sorvane;

namespace {
constexpr float kMaxFloat = 3.4028235e38F;
constexpr double kMaxDouble = 1.7976931348623157e308;
} // namespace

TEST(VectorDeathTest, AnIndexOutOfRangeIsReportedAndEndsTheProcess) {
    const Vector<float> single;
    Vector<double> twofold;
    for (const int index : {4, -1, 1000, std::numeric_limits<int>::min()}) {
        const std::string message = "Error in function \"ElementAt\" of file \"opengllib/vector\" (line #375): Array "
                                    "index i should be 0, 1, 2, or 3, but i = " +
                                    std::to_string(index) + ".\n";
        EXPECT_EXIT(single.ElementAt(index), testing::ExitedWithCode(1), testing::Eq(message));
        EXPECT_EXIT(twofold.ElementAt(index), testing::ExitedWithCode(1), testing::Eq(message));
    }
}

// 5/3, 9/11 and 6/7 in single, 5/3 and 7/10 in double precision come out one unit in the last place apart when the
// reciprocal is taken first; that is the result wanted.
TEST(Vector, DividesByMultiplyingWithTheReciprocal) {
    EXPECT_EQ((Vector<float>(5, -5, 1, 0) / 3.0F), Vector<float>(1.66666675F, -1.66666675F, 0.333333343F, 0));
    EXPECT_EQ((Vector<float>(9, 0, 0, 0) / 11.0F).ElementAt(0), 0.818181872F);
    EXPECT_EQ((Vector<float>(0, 0, 0, 6) / 7.0F).ElementAt(3), 0.857142925F);
    EXPECT_EQ((Vector<double>(5, 1, 0, 0) / 3.0).ElementAt(0), 1.6666666666666665);
    EXPECT_EQ((Vector<double>(7, 0, 0, 0) / 10.0).ElementAt(0), 0.70000000000000007);
}

TEST(Vector, SaturatesWhenDividedByZero) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (const float zero : {0.0F, -0.0F}) {
        EXPECT_EQ((Vector<float>(1, -2, 0, 0) / zero), Vector<float>(kMaxFloat, -kMaxFloat, 0, 0));
        EXPECT_EQ(
            (Vector<float>(1e-45F, -kInfinity, -0.0F, kInfinity) / zero),
            Vector<float>(kMaxFloat, -kMaxFloat, 0, kMaxFloat));
    }
    EXPECT_EQ((Vector<double>(1, -2, 0, 3) / 0.0), Vector<double>(kMaxDouble, -kMaxDouble, 0, kMaxDouble));
}

TEST(Vector, CrossesInThreeDimensions) {
    // By hand: (2·7 − 3·5, 3·(−4) − 1·7, 1·5 − 2·(−4)).
    EXPECT_EQ(Cross(Vector<float>(1, 2, 3, 9), Vector<float>(-4, 5, 7, 9)), Vector<float>(-1, -19, 13, 0));
}

TEST(Vector, LengthCountsTheFourthComponent) {
    EXPECT_EQ(Length(Vector<float>(2, -3, 6, 0)), 7.0F);
    EXPECT_EQ(Length(Vector<float>(1, 1, 1, 1)), 2.0F);
    EXPECT_EQ(Length(Vector<float>(0, 0, -1, 1)), std::sqrt(2.0F));
}
