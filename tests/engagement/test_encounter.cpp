// The geometry of an encounter.
#include "encounter.h"

#include <limits>

#include <gtest/gtest.h>

#include "etxyz.h"

namespace {
keyframe sample(double time, float threatX, float threatY, float threatZ) {
    keyframe made;
    made.time = time;
    made.threatPos[0] = threatX;
    made.threatPos[1] = threatY;
    made.threatPos[2] = threatZ;
    return made;
}

QMap<double, keyframe> mapOf(std::initializer_list<keyframe> samples) {
    QMap<double, keyframe> map;
    for (const keyframe& each : samples)
        map[each.time] = each;
    return map;
}

TEST(ClosestApproach, IsSolvedBetweenSamples) {
    // The threat passes 5 units from a target at rest, halfway between two samples.
    const auto found = closestApproach(mapOf({sample(1.0, -10, 3, 4), sample(3.0, 10, 3, 4)}));
    ASSERT_TRUE(found);
    EXPECT_DOUBLE_EQ(found->time, 2.0);
    EXPECT_DOUBLE_EQ(found->range, 5.0);
}

TEST(ClosestApproach, IsFoundOnASampleAtAnEndAndOfASingleSample) {
    struct Row {
        QMap<double, keyframe> samples;
        double time;
        double range;
    };
    const Row rows[] = {
        {mapOf({sample(0.0, 10, 0, 0), sample(1.0, 20, 0, 0)}), 0.0, 10.0},
        {mapOf({sample(0.0, 20, 0, 0), sample(1.0, 10, 0, 0)}), 1.0, 10.0},
        {mapOf({sample(0.0, 9, 0, 0), sample(1.0, 3, 0, 0), sample(2.0, 3, 9, 0)}), 1.0, 3.0},
        {mapOf({sample(4.0, 0, 7, 0)}), 4.0, 7.0},
        {mapOf({sample(0.0, 5, 0, 0), sample(1.0, 5, 0, 0)}), 0.0, 5.0}, // the earliest of equal ones
    };
    for (const Row& row : rows) {
        const auto found = closestApproach(row.samples);
        ASSERT_TRUE(found);
        EXPECT_EQ(found->time, row.time);
        EXPECT_EQ(found->range, row.range);
    }
}

TEST(ClosestApproach, PassesOverPositionsThatAreNotFinite) {
    const float infinite = std::numeric_limits<float>::infinity();
    const auto found = closestApproach(mapOf({sample(0.0, infinite, 0, 0), sample(1.0, 8, 0, 0)}));
    ASSERT_TRUE(found);
    EXPECT_EQ(found->range, 8.0);
    EXPECT_FALSE(closestApproach(mapOf({sample(0.0, std::numeric_limits<float>::quiet_NaN(), 0, 0)})));
    EXPECT_FALSE(closestApproach({}));
}

TEST(Encounter, RangeAndClosingSpeedAreThoseOfTheMovingPoints) {
    // x goes from -10 to 10 in 2 s: at 0.25 s x = -7.5, range² = 7.5² + 25, speed = 7.5 · 10 / range.
    const Encounter found = encounterBetween(sample(0.0, -10, 3, 4), sample(2.0, 10, 3, 4), 0.25);
    EXPECT_NEAR(found.range, 9.013878188659973, 1e-12);
    EXPECT_NEAR(found.closingSpeed, 8.320502943378438, 1e-12);
}

TEST(Encounter, AspectIsTheAngleFromTheNose) {
    struct Row {
        float pitch;
        float yaw;
        float threat[3];
        double degrees;
    };
    // World z points down and a positive pitch lifts the nose. cos 36.87° = 0.8.
    const Row rows[] = {
        {0, 0, {100, 0, 0}, 0.0},  {0, 0, {-100, 0, 0}, 180.0},           {0, 0, {0, 0, -7}, 90.0},
        {30, 0, {0, 0, -1}, 60.0}, {0, 90, {3, 4, 0}, 36.86989764584401},
    };
    for (const Row& row : rows) {
        keyframe at = sample(0.0, row.threat[0], row.threat[1], row.threat[2]);
        at.targetAtt[0] = 77.0F; // rolling doesn't matter
        at.targetAtt[1] = row.pitch;
        at.targetAtt[2] = row.yaw;
        EXPECT_NEAR(encounterBetween(at, at, 0.0).aspectDegrees, row.degrees, 1e-5);
    }
}

TEST(Encounter, TakesTheSpeedOfTheIntervalAfterASampleAndBeforeTheLast) {
    etxyz engagement;
    // Ranges 100, 90, 50, 60 at times 1, 2, 3, 4.
    engagement.keyframes =
        mapOf({sample(1.0, 100, 0, 0), sample(2.0, 90, 0, 0), sample(3.0, 50, 0, 0), sample(4.0, 60, 0, 0)});
    struct Row {
        double time;
        double range;
        double speed;
    };
    for (const Row& row :
         {Row{0.0, 100, 10}, {1.0, 100, 10}, {2.0, 90, 40}, {2.5, 70, 40}, {4.0, 60, -10}, {9.0, 60, -10}}) {
        const Encounter found = encounterAt(engagement, row.time);
        EXPECT_DOUBLE_EQ(found.range, row.range) << row.time;
        EXPECT_DOUBLE_EQ(found.closingSpeed, row.speed) << row.time;
    }
}

TEST(Encounter, OfASingleSampleOrAMeetingHasNoSpeed) {
    etxyz engagement;
    engagement.keyframes = mapOf({sample(0.0, 10, 0, 0)});
    EXPECT_EQ(encounterAt(engagement, 5.0).closingSpeed, 0.0);
    const Encounter meeting = encounterBetween(sample(0.0, -1, 0, 0), sample(2.0, 1, 0, 0), 1.0);
    EXPECT_EQ(meeting.range, 0.0);
    EXPECT_EQ(meeting.closingSpeed, 0.0);
    EXPECT_EQ(meeting.aspectDegrees, 0.0);
}
} // namespace
