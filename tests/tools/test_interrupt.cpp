// How a command notices that it is to end.
#include "interrupt.h"

#include <csignal>

#include <gtest/gtest.h>

#include "signalhandling.h"

using namespace sorvane;

TEST(Interrupt, HeedsWhatIsNotIgnoredAndPutsHandlersBack) {
    static int reached;
    reached = 0;
    const SignalHandling interrupted(SIGINT, [](int) { ++reached; });
    const SignalHandling hungUp(SIGHUP, SIG_IGN); // as under nohup
    {
        const Interrupt interrupt;
        ::raise(SIGHUP);
        EXPECT_EQ(Interrupt::requested(), 0);
        ::raise(SIGINT);
        EXPECT_EQ(Interrupt::requested(), SIGINT);
    }
    EXPECT_EQ(reached, 0);
    ::raise(SIGINT);
    EXPECT_EQ(reached, 1);
}
