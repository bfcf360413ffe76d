// Many files read on several threads.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "readahead.h"

using namespace sorvane;
using namespace std::chrono_literals;

namespace {
TEST(ReadAheadTest, OthersAreReadWhileOneTakesLongAndComeAfterIt) {
    constexpr std::size_t kCount = 20;
    constexpr std::size_t kMostWaiting = 4;
    std::atomic<std::size_t> read = 0; // besides the first one
    std::atomic<bool> mayEnd = false;
    ReadAhead<std::size_t> ahead(kCount, 2, kMostWaiting, [&](std::size_t number) {
        while (number == 0 && !mayEnd)
            std::this_thread::sleep_for(1ms);
        read += number == 0 ? 0 : 1;
        return number;
    });
    for (int turn = 0; turn < 5000 && read < kMostWaiting - 1; ++turn)
        std::this_thread::sleep_for(1ms);
    EXPECT_EQ(ahead.takeWithin(20ms), std::nullopt) << "the first one is still being read";
    EXPECT_EQ(read, kMostWaiting - 1) << "as many as may wait, with the first one";
    mayEnd = true;
    for (std::size_t number = 0; number < kCount; ++number)
        EXPECT_EQ(ahead.take(), number);
}

TEST(ReadAheadTest, NoOtherIsBegunOnceNobodyWantsThem) {
    constexpr std::size_t kCount = 2000;
    std::atomic<std::size_t> read = 0;
    {
        ReadAhead<std::size_t> ahead(kCount, 2, kCount, [&](std::size_t number) {
            std::this_thread::sleep_for(1ms);
            ++read;
            return number;
        });
        ahead.take();
    }
    EXPECT_LT(read, kCount / 2);
}
} // namespace
