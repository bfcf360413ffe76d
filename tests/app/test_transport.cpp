// Where ticks take the time: shuttle rates and loops.
#include <gtest/gtest.h>

#include "rows.h"
#include "transport.h"

using namespace sorvane;

namespace {
constexpr ClockRange kRange{.end = 12.5, .latest = 29.999};
constexpr double kTick = 0.033;

TEST(TransportTest, ShuttleDoublesOneWayAndTurnsAtRealTime) {
    Transport transport;
    const auto expectRate = [&](double rate) {
        ASSERT_TRUE(transport.shuttleRate().has_value());
        EXPECT_EQ(*transport.shuttleRate(), rate);
        EXPECT_DOUBLE_EQ(transport.next(5.0, 1000.0, kRange).time, 5.0 + rate * kTick) << "the speed has no part in it";
    };
    for (const double rate : {1.0, 2.0, 4.0, 8.0, 16.0, 32.0, 32.0}) {
        transport.shuttleForward();
        expectRate(rate);
    }
    for (const double rate : {-1.0, -2.0, -4.0, -8.0, -16.0, -32.0, -32.0}) {
        transport.shuttleBackward();
        expectRate(rate);
    }
    for (const double rate : {0.5, 0.25, 0.125, 1.0 / 16.0, 1.0 / 32.0, 1.0 / 32.0}) {
        transport.shuttleSlowlyForward();
        expectRate(rate);
    }
    transport.shuttleForward();
    expectRate(1.0 / 16.0);
    transport.shuttleSlowlyBackward();
    expectRate(-0.5);
    transport.leaveShuttle();
    EXPECT_DOUBLE_EQ(transport.next(5.0, 2.0, kRange).time, 5.066);
}

TEST(TransportTest, EndsAtTheLatestTimeAndBackwardAtZero) {
    Transport transport;
    ClockTick tick = transport.next(12.48, 1.0, kRange);
    EXPECT_TRUE(tick.isAtEnd);
    EXPECT_EQ(tick.time, 29.999);
    transport.shuttleBackward();
    tick = transport.next(0.02, 1.0, kRange);
    EXPECT_TRUE(tick.isAtStart);
    EXPECT_EQ(tick.time, 0.0);
    EXPECT_DOUBLE_EQ(transport.next(29.999, 1.0, kRange).time, 12.5 - kTick) << "nothing lies behind the end";
}

TEST(TransportTest, LoopsBetweenItsPointsOnlyWhenOn) {
    // The times that follow now with the loop on and off.
    for (const auto& [in, out, now, isBackward, on, off] : Rows<double, double, double, bool, double, double>{
             {2.0, 3.0, 2.5, false, 2.533, 2.533},
             {2.0, 3.0, 2.99, false, 2.0, 3.023},
             {2.0, 3.0, 1.0, false, 1.033, 1.033},
             {2.0, 3.0, 8.0, false, 2.0, 8.033},
             {2.0, 3.0, 2.01, true, 3.0, 1.977},
             {0.0, 99.0, 12.49, false, 0.0, 29.999},        // to the end, from the start
             {3.0, 2.0, 2.5, false, 0.0, 2.533},            // an out point before the in point moves it to the start
             {2.0, 2.0, 2.0, false, 0.0, 2.033},            // as does one at the in point
             {12.5, 99.0, 12.49, false, 29.999, 29.999}}) { // no length, no loop
        SCOPED_TRACE(now);
        Transport transport;
        transport.setInPoint(in);
        transport.setOutPoint(out);
        if (isBackward)
            transport.shuttleBackward();
        EXPECT_DOUBLE_EQ(transport.next(now, 1.0, kRange).time, off);
        transport.toggleLoop();
        EXPECT_DOUBLE_EQ(transport.next(now, 1.0, kRange).time, on);
    }
}

TEST(TransportTest, AnInPointThatLeavesNoLengthTakesTheOutPointToTheEnd) {
    for (const double in : {3.0, 4.0}) {
        Transport transport;
        transport.setOutPoint(3.0);
        transport.setInPoint(in);
        EXPECT_EQ(transport.inPoint(), in);
        EXPECT_EQ(transport.outPoint(kRange), 12.5);
    }
}

TEST(TransportTest, AnEngagementPastTheLatestTimeLoopsThere) {
    Transport transport;
    transport.toggleLoop();
    EXPECT_EQ(transport.next(29.999, 1.0, {.end = 40.0, .latest = 29.999}).time, 0.0);
}
} // namespace
