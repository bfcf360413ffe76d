// Statistics of samples, against closed forms and values worked out by hand.
#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "statistics.h"
#include "twosamples.h"

using namespace sorvane;

namespace {
using Values = std::vector<double>;

Values counting(int from, int to, int step = 1) {
    Values values;
    for (int i = from; i <= to; i += step)
        values.push_back(i);
    return values;
}

TEST(Statistics, MomentsAndQuantilesOfType7) {
    const Values one{4.0};
    const Values some{1.0, 2.0, 4.0, 8.0};
    EXPECT_DOUBLE_EQ(meanOf(some), 3.75);
    EXPECT_DOUBLE_EQ(standardDeviationOf(some), std::sqrt(28.75 / 3.0));
    EXPECT_DOUBLE_EQ(standardDeviationOf(Values{1e9 + 1.0, 1e9 + 2.0, 1e9 + 3.0}), 1.0)
        << "no squares of what is large";
    const struct {
        const Values& values;
        double share;
        double quantile;
    } rows[] = {{some, 0.0, 1.0},  {some, 1.0, 8.0}, {some, 0.5, 3.0}, {some, 0.25, 1.75},
                {some, 0.95, 7.4}, {one, 0.05, 4.0}, {one, 1.0, 4.0}};
    for (const auto& row : rows)
        EXPECT_DOUBLE_EQ(quantileOf(row.values, row.share), row.quantile) << row.share;
    EXPECT_TRUE(std::isnan(meanOf({})) && std::isnan(medianOf({})) && std::isnan(standardDeviationOf(one)));
}

// Wilson's interval ends where the score test of that share is at its limit: (p̂ - p)² = z² p (1 - p) / n.
TEST(Statistics, WilsonIntervalSolvesTheScoreEquation) {
    constexpr double kSquared = 3.841458820694124; // 95 % of chi-squared with one degree of freedom
    for (const Share share : {Share{0, 10}, Share{1, 29}, Share{15, 148}, Share{81, 263}, Share{56, 56}, Share{1, 1}}) {
        SCOPED_TRACE(share.count);
        const Interval interval = wilsonInterval(share);
        EXPECT_LE(interval.low, share.value());
        EXPECT_GE(interval.high, share.value());
        for (const double end : {interval.low, interval.high}) {
            const double variance = end * (1.0 - end) / static_cast<double>(share.of);
            EXPECT_TRUE(variance == 0.0 || std::abs(std::pow(share.value() - end, 2) - kSquared * variance) < 1e-12);
        }
    }
    EXPECT_EQ(wilsonInterval({0, 10}).low, 0.0);
    EXPECT_EQ(wilsonInterval({10, 10}).high, 1.0);
    EXPECT_TRUE(std::isnan(wilsonInterval({}).low));
}

// The examples of the paper's table II, method 10.
TEST(Statistics, NewcombesExamples) {
    const struct {
        Share a;
        Share b;
        double low;
        double high;
    } rows[] = {
        {{56, 70}, {48, 80}, 0.0524, 0.3339},
        {{9, 10}, {3, 10}, 0.1705, 0.8090},
        {{5, 56}, {0, 29}, -0.0381, 0.1926},
        {{10, 10}, {0, 10}, 0.6075, 1.0},
    };
    for (const auto& row : rows) {
        const Interval interval = newcombeInterval(row.a, row.b);
        EXPECT_NEAR(interval.low, row.low, 5e-5);
        EXPECT_NEAR(interval.high, row.high, 5e-5);
        const Interval back = newcombeInterval(row.b, row.a);
        EXPECT_DOUBLE_EQ(back.low, -interval.high);
    }
}

// Resampled the long way, the medians have the same distribution.
TEST(Statistics, MediansOfResamples) {
    for (const int n : {2, 5, 12}) {
        SCOPED_TRACE(n);
        Values values;
        for (int i = 0; i < n; ++i)
            values.push_back(i * i);
        std::mt19937 random(7);
        constexpr int kDraws = 40000;
        Values slow;
        Values fast;
        MedianResampler resampler(values);
        for (int i = 0; i < kDraws; ++i) {
            Values sample;
            for (int k = 0; k < n; ++k)
                sample.push_back(values[std::uniform_int_distribution<std::size_t>(0, values.size() - 1)(random)]);
            std::ranges::sort(sample);
            slow.push_back(medianOf(sample));
            fast.push_back(resampler.next());
        }
        std::ranges::sort(slow);
        std::ranges::sort(fast);
        double distance = 0.0;
        for (const double value : slow) {
            const auto shareBelow = [value](const Values& drawn) {
                return static_cast<double>(std::ranges::upper_bound(drawn, value) - drawn.begin()) / kDraws;
            };
            distance = std::max(distance, std::abs(shareBelow(slow) - shareBelow(fast)));
        }
        EXPECT_LT(distance, 0.015) << "what chance leaves in one of a thousand is 0.0138";
    }
}

TEST(Statistics, MedianIntervals) {
    const Values values = counting(0, 10000);
    const Interval interval = medianInterval(values);
    // A median's standard error is half a standard error of places: 0.98 √n to either side.
    EXPECT_NEAR(interval.low, 5000.0 - 98.0, 5.0);
    EXPECT_NEAR(interval.high, 5000.0 + 98.0, 5.0);
    EXPECT_EQ(medianInterval(values), interval) << "the seed is fixed";
    const Interval difference = medianDifferenceInterval(values, values);
    EXPECT_NEAR(difference.low, -98.0 * std::sqrt(2.0), 7.0);
    EXPECT_NEAR(difference.high, 98.0 * std::sqrt(2.0), 7.0);
    EXPECT_TRUE(std::isnan(medianInterval(Values{1.0}).low));
    EXPECT_NEAR(cumulativeBand(1000), 0.0429470, 1e-6);
}

// The chances are shares of the 70, 20 and so on ways to deal the values out, counted by hand or by listing them.
TEST(TwoSamples, ChancesOfSmallSamplesAreExact) {
    const struct {
        Values a;
        Values b;
        double distance;
        double curvesChance;
        double greater;
        double ranksChance;
    } rows[] = {
        {{1, 2, 3}, {4, 5, 6}, 1.0, 2.0 / 20.0, 0.0, 2.0 / 20.0},
        {{1, 2, 3, 4}, {5, 6, 7, 8}, 1.0, 2.0 / 70.0, 0.0, 2.0 / 70.0},
        {{1, 3, 5}, {2, 4, 6}, 1.0 / 3.0, 1.0, 3.0 / 9.0, 0.7},
        {{1, 2, 5}, {3, 4, 6}, 2.0 / 3.0, 0.6, 2.0 / 9.0, 0.4},
        {{1, 1}, {1, 2}, 0.5, 1.0, 0.25, 1.0},
        {{1, 1, 2}, {2, 3, 3}, 2.0 / 3.0, 0.6, 0.5 / 9.0, 0.2},
        {{4, 4}, {4, 4, 4}, 0.0, 1.0, 0.5, 1.0},
        {{9}, {2}, 1.0, 1.0, 1.0, 1.0},
        {{1, 1, 5, 5}, {5, 5, 5, 5}, 0.5, 3.0 / 7.0, 0.25, 3.0 / 7.0}, // both ones in one sample: 2 · 15/70
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.a) + testing::PrintToString(row.b));
        const KolmogorovSmirnov curves = kolmogorovSmirnov(row.a, row.b);
        EXPECT_NEAR(curves.distance, row.distance, 1e-15);
        EXPECT_NEAR(curves.p, row.curvesChance, 1e-12);
        const MannWhitney ranks = mannWhitney(row.a, row.b);
        EXPECT_NEAR(ranks.greater, row.greater, 1e-15);
        EXPECT_NEAR(ranks.p, row.ranksChance, 1e-12);
        EXPECT_TRUE(curves.isExact && ranks.isExact);
    }
}

TEST(TwoSamples, LimitsOfLargeSamplesContinueTheExactOnes) {
    const Values a = counting(0, 7998, 2); // 4,000
    const Values small = counting(300, 5298, 2);
    const Values large = counting(300, 7300, 2); // 3,501: beyond what is counted out
    const KolmogorovSmirnov exact = kolmogorovSmirnov(a, small);
    const KolmogorovSmirnov limit = kolmogorovSmirnov(a, large);
    EXPECT_TRUE(exact.isExact);
    EXPECT_FALSE(limit.isExact);
    const double lambda = limit.distance * std::sqrt(4000.0 * 3501.0 / 7501.0);
    EXPECT_NEAR(limit.p, 2.0 * std::exp(-2.0 * lambda * lambda), limit.p * 1e-3) << "its later terms are small";
    const KolmogorovSmirnov mirrored = kolmogorovSmirnov(large, a);
    EXPECT_EQ(mirrored.distance, limit.distance);

    // Up to 40 values together all are counted out, and the normal distribution is near already.
    const auto ranksOf = [](int m) {
        return mannWhitney(counting(0, 38, 2), counting(9, 9 + 2 * (m - 1), 2));
    };
    EXPECT_FALSE(ranksOf(21).isExact);
    const MannWhitney counted = ranksOf(20);
    EXPECT_TRUE(counted.isExact);
    const double distance = 200.0 - 400.0 * counted.greater - 0.5;
    EXPECT_NEAR(counted.p, std::erfc(distance / std::sqrt(2.0 * 400.0 / 12.0 * 41.0)), 0.002);
    // 30 against 30 with ties: U = 450, so that nothing is left after the correction.
    EXPECT_DOUBLE_EQ(mannWhitney(Values(30, 1.0), Values(30, 1.0)).p, 1.0);
    // By halves: 25 ones and 5 twos against 5 ones and 25 twos.
    Values ones(25, 1.0);
    ones.insert(ones.end(), 5, 2.0);
    Values twos(5, 1.0);
    twos.insert(twos.end(), 25, 2.0);
    const MannWhitney tied = mannWhitney(ones, twos);
    EXPECT_DOUBLE_EQ(tied.greater, (5.0 * 5.0 + (25.0 * 5.0 + 5.0 * 25.0) / 2.0) / 900.0);
    const double variance = 900.0 / 12.0 * (61.0 - 2.0 * (27000.0 - 30.0) / (60.0 * 59.0));
    EXPECT_NEAR(tied.p, std::erfc((450.0 - 150.0 - 0.5) / std::sqrt(2.0 * variance)), 1e-18);
}
} // namespace
