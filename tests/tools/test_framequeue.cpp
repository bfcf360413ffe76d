// Frames between threads: none lost, none twice, and everybody is let go at the end.
#include "framequeue.h"

#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace sorvane;

namespace {
constexpr std::int64_t kFrames = 500;
constexpr std::size_t kCapacity = 4;
constexpr int kWriters = 3;

struct Taken {
    std::multiset<std::int64_t> numbers;
    std::mutex mutex;
};

std::vector<std::thread> startWriters(FrameQueue& queue, Taken& taken) {
    std::vector<std::thread> writers;
    for (int i = 0; i < kWriters; ++i)
        writers.emplace_back([&] {
            while (const auto frame = queue.pop()) {
                const std::lock_guard lock(taken.mutex);
                taken.numbers.insert(frame->number);
            }
        });
    return writers;
}

TEST(FrameQueueTest, HandsEachFrameToOneWriter) {
    FrameQueue queue(kCapacity);
    Taken taken;
    std::vector<std::thread> writers = startWriters(queue, taken);
    std::multiset<std::int64_t> pushed;
    for (std::int64_t number = 0; number < kFrames; ++number) {
        EXPECT_TRUE(queue.push({number, {}}));
        pushed.insert(number);
    }
    queue.close();
    for (std::thread& writer : writers)
        writer.join();
    EXPECT_EQ(taken.numbers, pushed);
    EXPECT_FALSE(queue.push({kFrames, {}}));
}

TEST(FrameQueueTest, LetsAWaitingPushGoWhenItIsAbandoned) {
    FrameQueue queue(1);
    EXPECT_TRUE(queue.push({0, {}}));
    bool isTaken = true;
    std::thread drawer([&] { isTaken = queue.push({1, {}}); });
    queue.abandon();
    drawer.join();
    EXPECT_FALSE(isTaken);
    EXPECT_FALSE(queue.pop().has_value());
}
} // namespace
