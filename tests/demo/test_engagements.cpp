// What the demonstration engagements show.
#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "engagements.h"
#include "matrix.h"
#include "readtrajectory.h"
#include "rows.h"
#include "seeker.h"
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

double range(const ReadSample& sample) {
    return length(sample.targetPosition() - sample.threatPosition());
}

// The angle in degrees between `wanted` and the x axis of a body with this attitude, as the camera works it out.
double offAxis(const Vec3d& attitude, const Vec3d& wanted) {
    const Vector<float> x = BuildTransform(
                                1, 1, 1, static_cast<float>(attitude.x), static_cast<float>(attitude.y),
                                static_cast<float>(attitude.z), 0, 0, 0) *
                            Vector<float>(1, 0, 0, 0);
    const Vec3d axis{double{x.ElementAt(0)}, double{x.ElementAt(1)}, double{x.ElementAt(2)}};
    return std::acos(std::min(1.0, dot(axis, unit(wanted)))) * 57.29577951308232;
}

const struct Expectation {
    const char* name;
    std::size_t minimumSamples;
    std::size_t maximumSamples;
    double interval;
    std::size_t minimumFlares;
    bool isHit;
} kEngagements[] = {
    {"ETXYZ.OUT.turn", 1300, 1600, 0.01, 6, true},
    {"ETXYZ.OUT.vague", 15, 30, 0.5, 3, true},
    {"ETXYZ.OUT.veer", 900, 1200, 0.01, 4, false},
    {"ETXYZ.OUT.weave.Z", 600, 1000, 0.01, 3, true},
};
} // namespace

TEST(Engagements, AreSampledEvenlyFromZeroAndEndWithANearHitOrAFarMissBeforeTheClockDoes) {
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
        const auto closest = std::ranges::min_element(samples, {}, range);
        EXPECT_EQ(closest == samples.end() - 1, expected.isHit);
        EXPECT_TRUE(expected.isHit ? range(*closest) < 15.0 : range(*closest) > 200.0) << range(*closest);
    }
}

TEST(Engagements, LookAlongTheGyroAndFlyAlongTheNose) {
    for (const Expectation& expected : kEngagements) {
        SCOPED_TRACE(expected.name);
        const auto& samples = trajectory(expected.name).samples;
        for (std::size_t i = 0; i + 2 < samples.size(); ++i) {
            const ReadSample& sample = samples[i];
            SCOPED_TRACE(sample.time());
            const Vec3d sight = sample.targetPosition() - sample.threatPosition();
            ASSERT_TRUE(!expected.isHit || offAxis(sample.gyro(), sight) < 0.1);
            if (expected.interval > 0.1)
                continue;
            const ReadSample& next = samples[i + 1];
            // Positions have three decimals and the threat starts slowly: half a degree is the grain.
            ASSERT_LT(offAxis(sample.targetAttitude(), next.targetPosition() - sample.targetPosition()), 0.5);
            ASSERT_LT(offAxis(sample.threatAttitude(), next.threatPosition() - sample.threatPosition()), 0.5);
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
        std::set<double> bandCounts;
        for (const auto& [id, course] : flares) {
            SCOPED_TRACE(id);
            std::vector<double> brightness;
            for (const auto& [sample, flare] : course) {
                brightness.push_back(flare.at(5));
                EXPECT_GE(flare.at(5), 0.0);
                EXPECT_TRUE(flare.at(9) >= 0.5 && flare.at(9) <= 6.0) << "half axis " << flare.at(9);
                bandCounts.insert(flare.at(12));
            }
            const auto peak = std::max_element(brightness.begin(), brightness.end());
            EXPECT_TRUE(std::is_sorted(brightness.begin(), peak + 1)) << "rises";
            EXPECT_TRUE(std::is_sorted(peak, brightness.end(), std::greater<>())) << "then fades";
            const auto& [last, atLast] = course.back();
            const double behind = length(ReadSample::three(atLast, 2) - last->targetPosition());
            const double age = last->time() - course.front().first->time();
            EXPECT_TRUE(behind > 50.0 * age && behind < 250.0 * age + 10.0) << behind;
            if (last != &samples.back()) {
                EXPECT_NEAR(age, 4.0, 0.5 + expected.interval) << "burns out";
            }
        }
        EXPECT_EQ(bandCounts, expected.isHit ? (std::set{1.0, 3.0}) : std::set{1.0});
    }
}

TEST(Engagements, LetTheFirstFlareTakeTheSeekerAway) {
    const ReadTrajectory& veer = trajectory("ETXYZ.OUT.veer");
    const double halfField = std::stod(veer.header.at(11)) / 2.0;
    const auto off = [](const ReadSample& sample, const Vec3d& position) {
        return offAxis(sample.gyro(), position - sample.threatPosition());
    };
    double released = 0.0;
    double closest = 1e9; // of the threat to the flare
    bool isTargetLost = false;
    for (const ReadSample& sample : veer.samples) {
        SCOPED_TRACE(sample.time());
        const auto first = sample.flares.find(1);
        const double offTarget = off(sample, sample.targetPosition());
        isTargetLost = isTargetLost || offTarget > halfField;
        if (first != sample.flares.end()) {
            const Vec3d flare = ReadSample::three(first->second, 2);
            closest = std::min(closest, length(flare - sample.threatPosition()));
            ASSERT_TRUE(sample.time() < released + 0.1 || sample.time() > released + 3.0 || off(sample, flare) < 0.1);
        } else if (!isTargetLost) {
            released = sample.time();
            ASSERT_LT(offTarget, 0.1);
        }
        ASSERT_TRUE(!isTargetLost || offTarget > halfField) << "it never comes back into the field";
    }
    EXPECT_TRUE(isTargetLost);
    EXPECT_LT(closest, 50.0) << "the threat goes where it looks";
}

TEST(Seeker, FollowsWhatIsBrightestInItsField) {
    const auto source = [](double degrees, double range, double brightness) {
        const double angle = degrees / 57.29577951308232;
        return HeatSource{{range * std::cos(angle), range * std::sin(angle), 0.0}, {}, brightness};
    };
    for (const auto& [what, sources, seconds, turned] : Rows<const char*, std::vector<HeatSource>, double, double>{
             {"the brighter one", {source(1, 1000, 2), source(-1, 1000, 3)}, 1, -1},
             {"the nearer one: brightness falls with the square", {source(1, 1000, 2), source(-1, 800, 1.3)}, 1, -1},
             {"what is outside is not seen", {source(1.9, 1000, 1), source(2.1, 10, 9)}, 1, 1.9},
             {"nor what is behind", {source(180, 10, 9)}, 1, 0},
             {"no faster than 20 degrees a second", {source(1.5, 1000, 1)}, 0.05, 1.0}}) {
        SCOPED_TRACE(what);
        Seeker seeker(4.0, {5.0, 0.0, 0.0});
        EXPECT_EQ(seeker.follow({}, sources, seconds).has_value(), turned != 0.0);
        EXPECT_NEAR(std::atan2(seeker.axis().y, seeker.axis().x) * 57.29577951308232, turned, 1e-3);
        EXPECT_NEAR(length(seeker.axis()), 1.0, 1e-12);
    }
}

TEST(Engagements, OneNamesMissingDataAndExplainsItself) {
    EXPECT_EQ(trajectory("ETXYZ.OUT.turn").comments, 0);
    const ReadTrajectory& vague = trajectory("ETXYZ.OUT.vague");
    for (const std::size_t line : {0U, 2U, 5U, 6U})
        EXPECT_TRUE(vague.header.at(line).starts_with("/somewhere/demo/missing/"));
    EXPECT_EQ(vague.header.at(11), "unknown");
    EXPECT_EQ(vague.comments, 12 + static_cast<int>(vague.samples.size()));
}
