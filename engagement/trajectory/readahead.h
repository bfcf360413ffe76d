// Reads many files on several threads and hands out what they gave in order.
#pragma once

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

namespace sorvane {
// On which this process may run, as a cluster's task may on some of a machine's: at least one.
std::size_t usableProcessors();

template <class Result> class ReadAhead {
public:
    using Read = std::function<Result(std::size_t)>; // must not throw

    // Calls `read` with the numbers below `count`, on so many threads at once. At most `mostWaiting` results wait, the
    // one that is taken next among them.
    ReadAhead(std::size_t count, std::size_t threads, std::size_t mostWaiting, Read read)
        : count_(count), read_(std::move(read)), results_(mostWaiting) {
        for (std::size_t i = 0; i < std::min(count, threads); ++i)
            threads_.emplace_back([this] { readOn(); });
    }
    // Begins no other, and waits for those that are being read.
    ~ReadAhead() {
        const std::lock_guard lock(mutex_);
        next_ = count_;
        isTaken_.notify_all();
    }
    ReadAhead(const ReadAhead&) = delete;
    ReadAhead& operator=(const ReadAhead&) = delete;

    // The results by ascending number, `count` in all. Waits for the next one.
    Result take() {
        std::unique_lock lock(mutex_);
        isRead_.wait(lock, [this] { return place(taken_).has_value(); });
        return takeNext();
    }
    // Nothing when it isn't there in time.
    std::optional<Result> takeWithin(std::chrono::milliseconds most) {
        std::unique_lock lock(mutex_);
        if (!isRead_.wait_for(lock, most, [this] { return place(taken_).has_value(); }))
            return std::nullopt;
        return takeNext();
    }

private:
    void readOn() {
        while (const std::optional<std::size_t> number = nextNumber()) {
            Result result = read_(*number);
            const std::lock_guard lock(mutex_);
            place(*number) = std::move(result);
            isRead_.notify_one();
        }
    }

    std::optional<std::size_t> nextNumber() {
        std::unique_lock lock(mutex_);
        isTaken_.wait(lock, [this] { return next_ >= count_ || next_ < taken_ + results_.size(); });
        return next_ < count_ ? std::optional(next_++) : std::nullopt;
    }

    std::optional<Result>& place(std::size_t number) { return results_[number % results_.size()]; }

    Result takeNext() {
        Result result = *std::exchange(place(taken_), std::nullopt);
        ++taken_;
        isTaken_.notify_all();
        return result;
    }

    const std::size_t count_;
    const Read read_;
    std::mutex mutex_;
    std::condition_variable isRead_;
    std::condition_variable isTaken_;
    std::vector<std::optional<Result>> results_; // by the rest of their number
    std::size_t next_ = 0;
    std::size_t taken_ = 0;
    std::vector<std::jthread> threads_; // the last member: they end before the others
};
} // namespace sorvane
