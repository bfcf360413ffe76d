// The 4×4 matrix, the body transform and the four routines on raw matrices. The expected numbers come from a script of
// its own that rounds every step to single precision, and from quaternions for the rotations.
#include <array>
#include <string>

#include <gtest/gtest.h>

#include "matrix.h"
#include "rows.h"

using namespace sorvane;

namespace {
using Components = std::array<float, 16>;

Components componentsOf(const Matrix<float>& matrix) {
    Components components;
    std::copy_n(matrix.data(), 16, components.begin());
    return components;
}

void expectClose(const Matrix<float>& actual, const Components& expected) {
    for (std::size_t i = 0; i < 16; ++i)
        EXPECT_FLOAT_EQ(actual.data()[i], expected[i]) << "component " << i;
}
} // namespace

TEST(MatrixDeathTest, AnIndexOutOfRangeIsReportedRowFirstAndEndsTheProcess) {
    const Matrix<float> constant;
    Matrix<float> changing;
    for (const auto& [row, col, message] : Rows<int, int, std::string>{
             {4, 0, "(line #454): row should be 0, 1, 2, or 3, but is 4.\n"},
             {-1, 7, "(line #454): row should be 0, 1, 2, or 3, but is -1.\n"},
             {3, 4, "(line #460): col should be 0, 1, 2, or 3, but is 4.\n"},
             {0, -2, "(line #460): col should be 0, 1, 2, or 3, but is -2.\n"}}) {
        const std::string line = "Error in function \"EltAt\" of file \"opengllib/matrix\" " + message;
        EXPECT_EXIT(constant(row, col), testing::ExitedWithCode(1), testing::Eq(line));
        EXPECT_EXIT(changing(row, col) = 1, testing::ExitedWithCode(1), testing::Eq(line));
    }
}

TEST(Matrix, MultipliesInSinglePrecision) {
    Matrix<float> a;
    Matrix<float> b;
    for (int row = 0; row < 4; ++row)
        for (int col = 0; col < 4; ++col) {
            a(row, col) = static_cast<float>(0.1 * (row + 1) + 0.7 * col);
            b(row, col) = static_cast<float>(1.3 * row - 0.37 * col + 0.01);
        }
    const Components product = {13.566F,     14.3500004F, 15.1340008F, 15.9180002F, 11.8640003F, 12.5F,
                                13.1360006F, 13.7720003F, 10.1620007F, 10.6499996F, 11.1380005F, 11.6260004F,
                                8.46000004F, 8.79999924F, 9.14000034F, 9.47999954F};
    EXPECT_EQ(componentsOf(a * b), product);
    EXPECT_EQ(
        (a * Vector<float>(0.3F, -1.7F, 2.9F, 1.0F)),
        Vector<float>(5.22000027F, 5.47000027F, 5.72000027F, 5.97000027F));
}

// The cosine of a right angle shows which constant turned degrees into radians: the neighbouring float would give
// -4.37113883e-08.
TEST(BuildTransform, TurnsDegreesIntoRadiansWithItsOwnConstant) {
    const float cosine = -1.62920685e-07F;
    expectClose(
        BuildTransform(1, 1, 1, 90, 0, 0, 0, 0, 0), {1, 0, 0, 0, 0, cosine, 1, 0, 0, -1, cosine, 0, 0, 0, 0, 1});
    expectClose(
        BuildTransform(1, 1, 1, 0, 90, 0, 0, 0, 0), {cosine, 0, -1, 0, 0, 1, 0, 0, 1, 0, cosine, 0, 0, 0, 0, 1});
    expectClose(
        BuildTransform(1, 1, 1, 0, 0, 90, 0, 0, 0), {cosine, 1, 0, 0, -1, cosine, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
}

TEST(BuildTransform, ScalesThenRollsThenPitchesThenYawsThenMoves) {
    expectClose(
        BuildTransform(2, 3, 0.5F, 10, 20, 30, 100, -200, 300),
        {1.62759531F, 0.939692736F, -0.684040368F, 0, -1.32290888F, 2.6476922F, 0.489527822F, 0, 0.189261183F,
         0.00901415944F, 0.462708265F, 0, 100, -200, 300, 1});
    expectClose(
        BuildTransform(1, 1, 1, -75.5F, 200, -361, 1e4F, 2e4F, -3e3F),
        {-0.939549446F, 0.0164004155F, 0.342020392F, 0, 0.335445672F, 0.244562581F, 0.90976119F, 0, -0.0687249303F,
         0.96949482F, -0.235280067F, 0, 1e4F, 2e4F, -3e3F, 1});
    // To the last bit: three components would differ if the products were taken from the right.
    const Components inThisOrder = {0.666110516F, 1.93452621F, -2.19406128F, 0.0F,         -0.464307964F, 0.45476684F,
                                    0.260010064F, 0.0F,        1.35785091F,  0.764998496F, 1.08674657F,   0.0F,
                                    1.0F,         2.0F,        3.0F,         1.0F};
    EXPECT_EQ(componentsOf(BuildTransform(3, 0.7F, 1.9F, 33, 47, 71, 1, 2, 3)), inThisOrder);
    const Vector<float> alongX(1, 0, 0, 1);
    EXPECT_EQ((BuildTransform(2, 1, 1, 0, 0, 0, 5, 6, 7) * alongX), Vector<float>(7, 6, 7, 1));
}

TEST(RawMatrix, TurnsPointsAboutAnAxisThroughAHub) {
    using Triple = std::array<float, 3>;
    // The point (12, -3, 5) about the hub (10, -4, 2).
    for (const auto& [axis, degrees, expected] : Rows<Triple, float, Triple>{
             {{0, 0, 1}, 90, {9, -2, 5}},
             {{0, 0, 4}, 90, {9, -2, 5}},
             {{1, 2, -3}, 50, {13.000605F, -5.454970F, 3.696888F}},
             {{1, 0, 0}, -120, {12, -1.901924F, -0.366025F}},
             {{0.5F, -0.5F, 0.1F}, 725, {11.800106F, -3.165445F, 5.172245F}},
             {{0, 0, 0}, 90, {12, -3, 5}}}) {
        const Triple hub = {10, -4, 2};
        const Triple back = {-10, 4, -2};
        Components matrix;
        matrix.fill(99);
        mat_identity_(matrix.data());
        mat_translate_(matrix.data(), &back[0], &back[1], &back[2]);
        mat_rotate_d_(matrix.data(), axis.data(), &degrees);
        mat_translate_(matrix.data(), &hub[0], &hub[1], &hub[2]);
        Triple point = {12, -3, 5};
        mat_vtransform_(matrix.data(), point.data(), point.data());
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(point[i], expected[i], 1e-5) << degrees << " degrees, coordinate " << i;
    }
}
