// What the demonstration engagements show.
#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "engagements.h"
#include "matrix.h"
#include "readtrajectory.h"
#include "temporarydirectory.h"
#include "uncompressed.h"

using namespace sorvane;

namespace {
constexpr const char* kDataRoot = "/somewhere/demo/data";

const ReadTrajectory& trajectory(const std::string& name) {
    static const std::map<std::string, ReadTrajectory> trajectories = [] {
        const TemporaryDirectory directory;
        std::map<std::string, ReadTrajectory> result;
        for (const DemonstrationFile& file : engagementFiles(kDataRoot)) {
            const std::string path = directory.write(file.name, file.contents);
            result.emplace(file.name, file.name.ends_with(".Z") ? uncompressed("uncompress", path) : file.contents);
        }
        return result;
    }();
    return trajectories.at(name);
}

Numbers difference(const Numbers& a, const Numbers& b) {
    return {a.at(0) - b.at(0), a.at(1) - b.at(1), a.at(2) - b.at(2)};
}
double norm(const Numbers& a) {
    return std::hypot(a.at(0), a.at(1), a.at(2));
}
double range(const ReadSample& sample) {
    return norm(difference(sample.targetPosition(), sample.threatPosition()));
}

// The angle in degrees between `wanted` and the x axis of a body with this attitude, as the camera works it out.
double offAxis(const Numbers& attitude, const Numbers& wanted) {
    const Vector<float> x = BuildTransform(
                                1, 1, 1, static_cast<float>(attitude.at(0)), static_cast<float>(attitude.at(1)),
                                static_cast<float>(attitude.at(2)), 0, 0, 0) *
                            Vector<float>(1, 0, 0, 0);
    const double cosine = (double{x.ElementAt(0)} * wanted.at(0) + double{x.ElementAt(1)} * wanted.at(1) +
                           double{x.ElementAt(2)} * wanted.at(2)) /
                          norm(wanted);
    return std::acos(std::min(1.0, cosine)) * 57.29577951308232;
}

const struct Expectation {
    const char* name;
    std::size_t minimumSamples;
    std::size_t maximumSamples;
    double interval;
    std::size_t minimumFlares;
} kEngagements[] = {
    {"ETXYZ.OUT.turn", 1300, 1600, 0.01, 6},
    {"ETXYZ.OUT.crossing.Z", 600, 1000, 0.01, 3},
    {"ETXYZ.OUT.sparse", 15, 30, 0.5, 3}};
} // namespace

TEST(Engagements, AreSampledEvenlyFromZeroAndEndWithANearHitBeforeTheClockDoes) {
    for (const Expectation& expected : kEngagements) {
        SCOPED_TRACE(expected.name);
        const auto& samples = trajectory(expected.name).samples;
        EXPECT_TRUE(samples.size() >= expected.minimumSamples && samples.size() <= expected.maximumSamples);
        EXPECT_EQ(samples.front().time(), 0.0);
        EXPECT_LT(samples.back().time(), 29.9);
        for (std::size_t i = 1; i + 1 < samples.size(); ++i)
            ASSERT_NEAR(samples[i].time(), static_cast<double>(i) * expected.interval, 1e-9);
        EXPECT_GT(samples.back().time(), samples[samples.size() - 2].time());

        EXPECT_TRUE(range(samples.front()) > 2000.0 && range(samples.front()) < 4000.0);
        EXPECT_LT(range(samples.back()), 15.0);
        EXPECT_EQ(std::ranges::min_element(samples, {}, range), samples.end() - 1);
    }
}

TEST(Engagements, HaveNoAngleThatWraps) {
    for (const Expectation& expected : kEngagements) {
        SCOPED_TRACE(expected.name);
        const auto& samples = trajectory(expected.name).samples;
        const auto expectSmooth = [](const Numbers& a, const Numbers& b) {
            for (std::size_t i = 0; i < 3; ++i)
                ASSERT_LT(std::abs(a.at(i) - b.at(i)), 90.0);
        };
        for (std::size_t i = 1; i < samples.size(); ++i) {
            const ReadSample& before = samples[i - 1];
            const ReadSample& after = samples[i];
            SCOPED_TRACE(after.time());
            expectSmooth(before.targetAttitude(), after.targetAttitude());
            expectSmooth(before.threatAttitude(), after.threatAttitude());
            expectSmooth(before.gyro(), after.gyro());
            for (const auto& [id, flare] : after.flares)
                if (const auto earlier = before.flares.find(id); earlier != before.flares.end())
                    expectSmooth(ReadSample::three(earlier->second, 6), ReadSample::three(flare, 6));
        }
    }
}

TEST(Engagements, LookAlongTheGyroAndFlyAlongTheNose) {
    for (const Expectation& expected : kEngagements) {
        SCOPED_TRACE(expected.name);
        const auto& samples = trajectory(expected.name).samples;
        for (std::size_t i = 0; i + 2 < samples.size(); ++i) {
            const ReadSample& sample = samples[i];
            SCOPED_TRACE(sample.time());
            ASSERT_LT(offAxis(sample.gyro(), difference(sample.targetPosition(), sample.threatPosition())), 0.1);
            if (expected.interval > 0.1)
                continue;
            const ReadSample& next = samples[i + 1];
            // Positions have three decimals and the threat starts slowly: half a degree is the grain.
            ASSERT_LT(
                offAxis(sample.targetAttitude(), difference(next.targetPosition(), sample.targetPosition())), 0.5);
            ASSERT_LT(
                offAxis(sample.threatAttitude(), difference(next.threatPosition(), sample.threatPosition())), 0.5);
        }
    }
}

TEST(Engagements, DropFlaresThatFallBehindAndBurnOut) {
    for (const Expectation& expected : kEngagements) {
        SCOPED_TRACE(expected.name);
        const auto& samples = trajectory(expected.name).samples;
        std::map<int, std::vector<std::pair<const ReadSample*, Numbers>>> flares;
        for (const ReadSample& sample : samples)
            for (const auto& [id, flare] : sample.flares) {
                ASSERT_EQ(flare.size(), 13U);
                flares[id].emplace_back(&sample, flare);
            }
        EXPECT_GE(flares.size(), expected.minimumFlares);
        bool hasOneBand = false;
        bool hasThreeBands = false;
        for (const auto& [id, course] : flares) {
            SCOPED_TRACE(id);
            std::vector<double> brightness;
            for (const auto& [sample, flare] : course) {
                brightness.push_back(flare.at(5));
                EXPECT_GE(flare.at(5), 0.0);
                EXPECT_TRUE(flare.at(9) >= 0.5 && flare.at(9) <= 6.0) << "half axis " << flare.at(9);
                (flare.at(12) < 3.0 ? hasOneBand : hasThreeBands) = true;
            }
            const auto peak = std::max_element(brightness.begin(), brightness.end());
            EXPECT_TRUE(std::is_sorted(brightness.begin(), peak + 1)) << "rises";
            EXPECT_TRUE(std::is_sorted(peak, brightness.end(), std::greater<>())) << "then fades";
            const auto& [last, atLast] = course.back();
            const Numbers behind = difference(ReadSample::three(atLast, 2), last->targetPosition());
            const double age = last->time() - course.front().first->time();
            EXPECT_GT(norm(behind), 50.0 * age);
            EXPECT_LT(norm(behind), 250.0 * age + 10.0);
            if (last != &samples.back()) {
                EXPECT_NEAR(age, 4.0, 0.5 + expected.interval) << "burns out";
            }
        }
        EXPECT_TRUE(hasOneBand && hasThreeBands);
    }
}

TEST(Engagements, NameTheirDataByPathsInTheirTreeAndExplainThemselvesWhereAsked) {
    const std::string data = std::string(kDataRoot) + "/";
    const std::vector<std::string> turn = {
        data + "ter0010/ter0010.top",
        data + "ter0010/ter0010_w0001_t1500_b0001.rad",
        data + "tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003.rad",
        "6.600 6.600 1.000",
        "-10000.000 -10000.000 -2.000",
        data + "tgt4004/tgt4004.vnl",
        data + "tgt4004/tgt4004_b0001_mat0004.brdf",
        "Climbing turn with flares",
        "yellow",
        "1",
        "Missile",
        "4.0",
    };
    EXPECT_EQ(trajectory("ETXYZ.OUT.turn").header, turn);
    EXPECT_EQ(trajectory("ETXYZ.OUT.turn").comments, 0);

    const auto& crossing = trajectory("ETXYZ.OUT.crossing.Z").header;
    EXPECT_EQ(crossing.at(0), data + "ter0020/ter0020.xml");
    EXPECT_EQ(crossing.at(1), data + "ter0020/ter0020_w0001_t1500_b0001_n0001.rad");
    EXPECT_EQ(crossing.at(8), "cyan");
    EXPECT_EQ(crossing.at(10), "Bullet");

    const ReadTrajectory& sparse = trajectory("ETXYZ.OUT.sparse");
    for (const std::size_t line : {0U, 2U, 5U, 6U})
        EXPECT_TRUE(sparse.header.at(line).starts_with("/somewhere/demo/missing/"));
    EXPECT_EQ(sparse.header.at(11), "unknown");
    EXPECT_EQ(sparse.comments, 12 + static_cast<int>(sparse.samples.size()));
}
