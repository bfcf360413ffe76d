// What blur, noise and digitiser do to a picture.
#include "sensormodel.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>

#include <gtest/gtest.h>

#include "rows.h"

using namespace sorvane;

namespace {
SensorPicture spotAt(int width, int height, int x, int y) {
    SensorPicture picture{width, height, std::vector<float>(static_cast<std::size_t>(width * height), 0.0F)};
    picture.values[static_cast<std::size_t>(y * width + x)] = 1.0F;
    return picture;
}

double sumOf(const SensorPicture& picture) {
    return std::accumulate(picture.values.begin(), picture.values.end(), 0.0);
}

SensorPicture evenPicture(int side, float value) {
    return {side, side, std::vector<float>(static_cast<std::size_t>(side * side), value)};
}

TEST(SensorModel, BlurKeepsTheSumWhereverTheLightFalls) {
    for (const auto& [sigma, x, y] :
         Rows<double, int, int>{{0.1, 10, 8}, {0.7, 0, 0}, {1.5, 19, 3}, {6.0, 1, 15}, {40.0, 10, 0}, {1000.0, 5, 5}}) {
        SensorPicture picture = spotAt(20, 16, x, y);
        blur(sigma, picture);
        EXPECT_NEAR(sumOf(picture), 1.0, 1e-6) << sigma;
    }
    std::mt19937 random(7);
    SensorPicture noisy = evenPicture(50, 0.0F);
    for (float& value : noisy.values)
        value = std::uniform_real_distribution(0.0F, 1e-3F)(random);
    const double before = sumOf(noisy);
    blur(2.3, noisy);
    EXPECT_NEAR(sumOf(noisy) / before, 1.0, 1e-6);
}

TEST(SensorModel, BlurIsTheGaussianOfItsWidth) {
    SensorPicture picture = spotAt(41, 41, 20, 20);
    blur(2.0, picture);
    // The part of a normal distribution of deviation 2 between -0.5 and 0.5, and between 2.5 and 3.5: tables of the
    // normal distribution at 0.25, 1.25 and 1.75.
    constexpr double kMiddle = 0.1974127;
    constexpr double kThird = 0.0655906;
    EXPECT_NEAR(picture.values[20 * 41 + 20], kMiddle * kMiddle, 1e-6);
    EXPECT_NEAR(picture.values[20 * 41 + 23], kMiddle * kThird, 1e-6);
    EXPECT_NEAR(picture.values[17 * 41 + 20], kMiddle * kThird, 1e-6);
    SensorPicture even = evenPicture(9, 0.25F);
    blur(3.0, even);
    for (const float value : even.values)
        ASSERT_NEAR(value, 0.25F, 1e-7F);
}

TEST(SensorModel, NoiseIsNormalAndRepeatsForSeedAndFrame) {
    constexpr double kDeviation = 2e-6;
    const auto noise = [](std::uint64_t seed, std::uint64_t frame) {
        SensorPicture picture = evenPicture(200, 1e-5F);
        addNoise(kDeviation, seed, frame, picture);
        return picture.values;
    };
    const std::vector<float> first = noise(42, 3);
    EXPECT_EQ(noise(42, 3), first);
    EXPECT_NE(noise(42, 4), first);
    EXPECT_NE(noise(43, 3), first);
    double mean = 0.0;
    double square = 0.0;
    double neighbours = 0.0;
    int beyondTwo = 0;
    for (std::size_t i = 0; i < first.size(); ++i) {
        const double value = (double{first[i]} - 1e-5) / kDeviation;
        mean += value / 40000.0;
        square += value * value / 40000.0;
        beyondTwo += std::abs(value) > 2.0 ? 1 : 0;
        if (i > 0)
            neighbours += value * (double{first[i - 1]} - 1e-5) / kDeviation / 40000.0;
    }
    // Four standard errors of 40,000 draws each; 4.55 % lie beyond two deviations.
    EXPECT_NEAR(mean, 0.0, 0.02);
    EXPECT_NEAR(square, 1.0, 0.03);
    EXPECT_NEAR(neighbours, 0.0, 0.02);
    EXPECT_NEAR(beyondTwo / 40000.0, 0.0455, 0.0042);
}

TEST(SensorModel, DigitisesToTheNearestStep) {
    // Two bits: 0, 1/3, 2/3 and 1 of full scale.
    for (const auto& [value, expected] : Rows<float, float>{
             {0.0F, 0.0F},
             {0.4F, 0.0F},
             {0.6F, 1.0F},
             {1.4F, 1.0F},
             {2.2F, 2.0F},
             {2.9F, 3.0F},
             {99.0F, 3.0F},
             {-5.0F, 0.0F},
             {std::nanf(""), 0.0F}}) {
        SensorPicture picture{1, 1, {value}};
        digitise(2, 3.0, picture);
        EXPECT_FLOAT_EQ(picture.values[0], expected) << value;
    }
    SensorPicture fine{1, 1, {0.123456F}};
    digitise(24, 1.0, fine);
    EXPECT_NEAR(fine.values[0], 0.123456F, 6e-8F);
}

TEST(SensorModel, GoesThroughItsPartsInOrderAndEachIsOffByDefault) {
    SensorPicture untouched = spotAt(8, 8, 3, 3);
    applySensor({}, 0, untouched);
    EXPECT_EQ(untouched.values, spotAt(8, 8, 3, 3).values);

    const SensorModel all{.blur = 1.0, .noise = 0.01, .seed = 9, .bits = 6, .fullScale = 0.5};
    SensorPicture picture = spotAt(8, 8, 3, 3);
    applySensor(all, 2, picture);
    SensorPicture byHand = spotAt(8, 8, 3, 3);
    blur(1.0, byHand);
    addNoise(0.01, 9, 2, byHand);
    digitise(6, 0.5, byHand);
    EXPECT_EQ(picture.values, byHand.values);
}
} // namespace
