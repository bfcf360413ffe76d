// Reads many files on all processors.
#include "survey.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace sorvane {
namespace {
constexpr std::size_t kMostWaiting = 256; // rows read ahead of the one that is taken next

class Survey {
public:
    Survey(std::size_t count, const std::function<RunRow(std::size_t)>& read) : count_(count), read_(read) {}

    // A reading thread's work.
    void readOn() {
        while (const std::optional<std::size_t> number = nextNumber()) {
            RunRow row = read_(*number);
            const std::lock_guard lock(mutex_);
            rows_[*number % kMostWaiting] = std::move(row);
            isRead_.notify_one();
        }
    }

    RunRow take(std::size_t number) {
        std::unique_lock lock(mutex_);
        std::optional<RunRow>& place = rows_[number % kMostWaiting];
        isRead_.wait(lock, [&] { return place.has_value(); });
        RunRow row = std::move(*place);
        place.reset(); // NOLINT(bugprone-use-after-move): it is the row that has moved
        taken_ = number + 1;
        isTaken_.notify_all();
        return row;
    }

    void stop() {
        const std::lock_guard lock(mutex_);
        next_ = count_;
        isTaken_.notify_all();
    }

private:
    std::optional<std::size_t> nextNumber() {
        std::unique_lock lock(mutex_);
        isTaken_.wait(lock, [&] { return next_ >= count_ || next_ < taken_ + kMostWaiting; });
        return next_ < count_ ? std::optional(next_++) : std::nullopt;
    }

    const std::size_t count_;
    const std::function<RunRow(std::size_t)>& read_;
    std::mutex mutex_;
    std::condition_variable isRead_;
    std::condition_variable isTaken_;
    std::vector<std::optional<RunRow>> rows_{kMostWaiting}; // by the rest of their number
    std::size_t next_ = 0;
    std::size_t taken_ = 0;
};
} // namespace

void survey(
    std::size_t count, std::size_t threads, const std::function<RunRow(std::size_t)>& read,
    const std::function<bool(RunRow)>& take) {
    struct Stop {
        Survey& running;
        ~Stop() { running.stop(); }
    };
    Survey running(count, read);
    std::vector<std::jthread> readers;
    const Stop atTheEnd{running};
    for (std::size_t i = 0; i < std::clamp<std::size_t>(count, 1, threads); ++i)
        readers.emplace_back([&running] { running.readOn(); });
    for (std::size_t number = 0; number < count; ++number)
        if (!take(running.take(number)))
            break;
}
} // namespace sorvane
