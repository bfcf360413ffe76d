// What is worked out once of an engagement.
#include "engagementfacts.h"

#include <gtest/gtest.h>

using namespace sorvane;

namespace {
keyframe sampleAt(double time, float threatX, const QList<int>& flares) {
    keyframe sample;
    sample.time = time;
    sample.threatPos[0] = threatX;
    for (const int id : flares) {
        flareKeyframe& flare = sample.flares.emplaceBack();
        flare.id = id;
    }
    return sample;
}

TEST(EngagementFacts, AreEventsInOrderWithOneNameForThoseOfOneTime) {
    // The threat passes the target at 2.01 s, between the samples at 1 s and 3 s.
    QMap<double, keyframe> samples;
    for (const keyframe& sample :
         {sampleAt(1.0, -101, {}), sampleAt(3.0, 99, {7, 8}), sampleAt(3.01, 100, {8, 7, 9}), sampleAt(4.0, 200, {9})})
        samples[sample.time] = sample;
    const EngagementFacts facts = factsOf(samples);
    ASSERT_TRUE(facts.closest);
    EXPECT_NEAR(facts.closest->time, 2.01, 1e-12);
    QStringList events;
    for (const EngagementEvent& event : facts.events)
        events << QString::number(event.time, 'f', 2) + ' ' + event.name;
    EXPECT_EQ(
        events.join('|'),
        "1.00 First sample|2.01 Closest approach|3.00 Flare 7, Flare 8|3.01 Flare 9|4.00 Last sample");
}

TEST(EngagementFacts, OfASingleSampleAreOneEvent) {
    const EngagementFacts facts = factsOf({{5.0, sampleAt(5.0, 10, {})}});
    ASSERT_EQ(facts.events.size(), 1U);
    EXPECT_EQ(facts.events[0].name, "First sample, Closest approach, Last sample");
}
} // namespace
