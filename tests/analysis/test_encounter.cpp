// The geometry of an encounter.
#include "encounter.h"

#include <array>
#include <limits>

#include <gtest/gtest.h>

#include "etxyz.h"
#include "rows.h"

using namespace sorvane;

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

TEST(ClosestApproach, IsSolvedBetweenSamplesOrFoundOnOne) {
    const float infinite = std::numeric_limits<float>::infinity();
    for (const auto& [samples, time, range] : Rows<QMap<double, keyframe>, double, double>{
             // Past a target at rest, halfway between two samples.
             {mapOf({sample(1.0, -10, 3, 4), sample(3.0, 10, 3, 4)}), 2.0, 5.0},
             {mapOf({sample(0.0, 10, 0, 0), sample(1.0, 20, 0, 0)}), 0.0, 10.0},
             {mapOf({sample(0.0, 20, 0, 0), sample(1.0, 10, 0, 0)}), 1.0, 10.0},
             {mapOf({sample(0.0, 9, 0, 0), sample(1.0, 3, 0, 0), sample(2.0, 3, 9, 0)}), 1.0, 3.0},
             {mapOf({sample(4.0, 0, 7, 0)}), 4.0, 7.0},
             {mapOf({sample(0.0, 5, 0, 0), sample(1.0, 5, 0, 0)}), 0.0, 5.0}, // the earliest of equal ones
             {mapOf({sample(0.0, infinite, 0, 0), sample(1.0, 8, 0, 0)}), 1.0, 8.0}}) {
        const auto found = closestApproach(samples);
        ASSERT_TRUE(found);
        EXPECT_DOUBLE_EQ(found->time, time);
        EXPECT_DOUBLE_EQ(found->range, range);
    }
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
    // World z points down and a positive pitch lifts the nose. cos 36.87° = 0.8.
    for (const auto& [pitch, yaw, threat, degrees] : Rows<float, float, std::array<float, 3>, double>{
             {0, 0, {100, 0, 0}, 0.0},
             {0, 0, {-100, 0, 0}, 180.0},
             {0, 0, {0, 0, -7}, 90.0},
             {30, 0, {0, 0, -1}, 60.0},
             {0, 90, {3, 4, 0}, 36.86989764584401}}) {
        keyframe at = sample(0.0, threat[0], threat[1], threat[2]);
        at.targetAtt[0] = 77.0F; // rolling doesn't matter
        at.targetAtt[1] = pitch;
        at.targetAtt[2] = yaw;
        EXPECT_NEAR(encounterBetween(at, at, 0.0).aspectDegrees, degrees, 1e-5);
    }
}

TEST(Encounter, BlendsTheNoseBetweenSamples) {
    const keyframe ahead = sample(0.0, 100, 0, 0);
    keyframe aside = sample(2.0, 100, 0, 0);
    aside.targetAtt[2] = 90.0F;
    EXPECT_NEAR(encounterBetween(ahead, aside, 0.5).aspectDegrees, 22.5, 1e-6);
}

TEST(Encounter, TakesTheSpeedOfTheIntervalAfterASampleAndBeforeTheLast) {
    etxyz engagement;
    // Ranges 100, 90, 50, 60 at times 1, 2, 3, 4.
    engagement.keyframes =
        mapOf({sample(1.0, 100, 0, 0), sample(2.0, 90, 0, 0), sample(3.0, 50, 0, 0), sample(4.0, 60, 0, 0)});
    for (const auto& [time, range, speed] : Rows<double, double, double>{
             {0.0, 100, 10}, {1.0, 100, 10}, {2.0, 90, 40}, {2.5, 70, 40}, {4.0, 60, -10}, {9.0, 60, -10}}) {
        const Encounter found = encounterAt(engagement, time);
        EXPECT_DOUBLE_EQ(found.range, range) << time;
        EXPECT_DOUBLE_EQ(found.closingSpeed, speed) << time;
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
