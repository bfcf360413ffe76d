// The geometry of an encounter.
#include "encounter.h"

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "rows.h"
#include "withoutnoise.h"

using namespace sorvane;

namespace {
Sample sample(double time, double threatX, double threatY, double threatZ) {
    Sample made;
    made.time = time;
    made.threatPosition = {threatX, threatY, threatZ};
    return made;
}

TEST(ClosestApproach, IsSolvedBetweenSamplesOrFoundOnOne) {
    const double infinite = std::numeric_limits<double>::infinity();
    for (const auto& [samples, time, range] : Rows<std::vector<Sample>, double, double>{
             // Past a target at rest, halfway between two samples.
             {{sample(1.0, -10, 3, 4), sample(3.0, 10, 3, 4)}, 2.0, 5.0},
             {{sample(0.0, 10, 0, 0), sample(1.0, 20, 0, 0)}, 0.0, 10.0},
             {{sample(0.0, 20, 0, 0), sample(1.0, 10, 0, 0)}, 1.0, 10.0},
             {{sample(0.0, 9, 0, 0), sample(1.0, 3, 0, 0), sample(2.0, 3, 9, 0)}, 1.0, 3.0},
             {{sample(4.0, 0, 7, 0)}, 4.0, 7.0},
             {{sample(0.0, 5, 0, 0), sample(1.0, 5, 0, 0)}, 0.0, 5.0}, // the earliest of equal ones
             {{sample(0.0, infinite, 0, 0), sample(1.0, 8, 0, 0)}, 1.0, 8.0}}) {
        const auto found = closestApproach(samples);
        ASSERT_TRUE(found);
        EXPECT_DOUBLE_EQ(found->time, time);
        EXPECT_DOUBLE_EQ(found->range, range);
    }
    EXPECT_FALSE(closestApproach(std::vector{sample(0.0, std::numeric_limits<double>::quiet_NaN(), 0, 0)}));
    EXPECT_FALSE(closestApproach({}));
}

TEST(Encounter, RangeAndClosingSpeedAreThoseOfTheMovingPoints) {
    // x goes from -10 to 10 in 2 s: at 0.25 s x = -7.5, range² = 7.5² + 25, speed = 7.5 · 10 / range.
    const Encounter found = encounterAt(std::vector{sample(0.0, -10, 3, 4), sample(2.0, 10, 3, 4)}, 0.25).value();
    EXPECT_NEAR(found.range, 9.013878188659973, 1e-12);
    EXPECT_NEAR(found.closingSpeed, 8.320502943378438, 1e-12);
}

TEST(Encounter, AspectIsTheAngleFromTheNose) {
    // World z points down and a positive pitch lifts the nose. cos 36.87° = 0.8.
    for (const auto& [pitch, yaw, threat, degrees] : Rows<double, double, Triple, double>{
             {0, 0, {100, 0, 0}, 0.0},
             {0, 0, {-100, 0, 0}, 180.0},
             {0, 0, {0, 0, -7}, 90.0},
             {30, 0, {0, 0, -1}, 60.0},
             {0, 90, {3, 4, 0}, 36.86989764584401}}) {
        Sample at = sample(0.0, threat[0], threat[1], threat[2]);
        at.targetAttitude[0] = 77.0; // rolling doesn't matter
        at.targetAttitude[1] = pitch;
        at.targetAttitude[2] = yaw;
        EXPECT_NEAR(encounterOn(std::vector{at}, 0).aspectDegrees, degrees, 1e-12);
    }
}

TEST(Encounter, BlendsTheNoseBetweenSamples) {
    const Sample ahead = sample(0.0, 100, 0, 0);
    Sample aside = sample(2.0, 100, 0, 0);
    aside.targetAttitude[2] = 90.0;
    EXPECT_NEAR(encounterAt(std::vector{ahead, aside}, 0.5)->aspectDegrees, 22.5, 1e-12);
}

TEST(Encounter, TakesTheSpeedOfTheIntervalAfterASampleAndBeforeTheLast) {
    // Ranges 100, 90, 50, 60 at times 1, 2, 3, 4.
    const std::vector samples = {
        sample(1.0, 100, 0, 0), sample(2.0, 90, 0, 0), sample(3.0, 50, 0, 0), sample(4.0, 60, 0, 0)};
    for (const auto& [time, range, speed] :
         Rows<double, double, double>{{1.0, 100, 10}, {2.0, 90, 40}, {2.5, 70, 40}, {4.0, 60, -10}}) {
        const std::optional<Encounter> found = encounterAt(samples, time);
        ASSERT_TRUE(found) << time;
        EXPECT_DOUBLE_EQ(found->range, range) << time;
        EXPECT_DOUBLE_EQ(found->closingSpeed, speed) << time;
    }
    for (const double outside : {0.999, 4.001, -1e9, 1e9, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_FALSE(encounterAt(samples, outside)) << outside;
    EXPECT_FALSE(encounterAt({}, 0.0));
    EXPECT_EQ(encounterAt(std::vector{sample(5.0, 10, 0, 0)}, 5.0)->closingSpeed, 0.0) << "a single sample";
}

TEST(Encounter, WhereTheBodiesMeetIsAsJustBefore) {
    // The target's nose points along x, so that a threat at x > 0 is nose-on. It comes by 20 a second and goes by 5.
    const std::vector hit = {sample(0.0, 40, 0, 0), sample(2.0, 0, 0, 0), sample(4.0, 0, 10, 0)};
    const std::vector start = {sample(0.0, 0, 0, 0), sample(1.0, -7, 0, 0)};
    const std::vector passage = {sample(0.0, -1, 0, 0), sample(2.0, 1, 0, 0)};
    const std::vector together = {sample(0.0, 0, 0, 0), sample(2.0, 0, 0, 0)};
    for (const auto& [samples, time, speed, aspect] : Rows<std::vector<Sample>, double, double, double>{
             {hit, 2.0, 20, 0},
             {{hit[0], hit[1]}, 2.0, 20, 0}, // the last sample
             {start, 0.0, -7, 180},          // nothing is before: as just after
             {passage, 1.0, 1, 180},
             {together, 0.0, 0, 0},
             {together, 2.0, 0, 0}}) {
        const std::optional<Encounter> met = encounterAt(samples, time);
        ASSERT_TRUE(met);
        EXPECT_EQ(met->range, 0.0);
        EXPECT_DOUBLE_EQ(met->closingSpeed, speed) << time;
        EXPECT_NEAR(met->aspectDegrees, aspect, 1e-9) << time;
    }
}

TEST(Encounter, FarFromTheOriginKeepsItsDigits) {
    // In single precision coordinates of this size lie 0.25 and 0.03 apart. 27.6 closer within 0.25 s.
    Sample earlier = sample(3.0, 500120.4, 4321012.7, -3000.05);
    earlier.targetPosition = {500000.1, 4321012.7, -3000.05};
    Sample later = earlier;
    later.time = 3.25;
    later.threatPosition[0] -= 6.9;
    const std::vector samples = {earlier, later};
    const Encounter found = writtenEncounterOn(samples, 0);
    EXPECT_EQ(found.range, 120.3);
    EXPECT_NEAR(found.closingSpeed, 27.6, 1e-8);
}

TEST(WithoutNoise, KeepsTheDigitsThatTheInputsHave) {
    for (const auto& [result, greatest, expected] : Rows<double, double, double>{
             {4321012.345 - 4321000.0, 4321012.345, 12.345},
             {14.004 - 14.0, 14.004, 0.004},
             {0.1, 0.0, 0.1},
             {1e-30 + 1e-46, 1e-30, 1e-30 + 1e-46}, // powers of ten of that size are not exact
             {5.0, std::numeric_limits<double>::infinity(), 5.0}})
        EXPECT_DOUBLE_EQ(withoutNoise(result, greatest), expected) << result;
    EXPECT_FALSE(std::signbit(withoutNoise(-1e-20, 1.0)));
}
} // namespace
