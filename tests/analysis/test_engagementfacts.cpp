// What is worked out once of an engagement.
#include "engagementfacts.h"

#include <gtest/gtest.h>

using namespace sorvane;

namespace {
struct Given {
    double time;
    double threatX;
    std::vector<int> flares;
};

SampleSeries seriesOf(const std::vector<Given>& rows) {
    SampleSeries series;
    for (const Given& row : rows) {
        Sample sample;
        sample.time = row.time;
        sample.threatPosition[0] = row.threatX;
        std::vector<Flare> flares(row.flares.size());
        for (std::size_t i = 0; i < flares.size(); ++i)
            flares[i].id = row.flares[i];
        series.add(sample, flares);
    }
    series.putInOrder();
    return series;
}

TEST(EngagementFacts, AreEventsInOrderWithOneNameForThoseOfOneTime) {
    // The threat passes the target at 2.01 s, between the samples at 1 s and 3 s. The file is out of order and has a
    // sample at 3 s twice, of which the later one counts.
    const EngagementFacts facts = factsOf(
        seriesOf({{3.0, 50, {1}}, {4.0, 200, {9}}, {1.0, -101, {}}, {3.01, 100, {8, 7, 9}}, {3.0, 99, {7, 8}}}));
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
    const EngagementFacts facts = factsOf(seriesOf({{5.0, 10, {}}}));
    ASSERT_EQ(facts.events.size(), 1U);
    EXPECT_EQ(facts.events[0].name, "First sample, Closest approach, Last sample");
}
} // namespace
