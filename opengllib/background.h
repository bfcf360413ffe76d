// One piece of work beside the thread that asked for it.
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <thread>
#include <utility>

namespace sorvane {
// Keeps a thread whose result nobody wants any more until it has ended: no one waits for it before the process ends.
// `hasEnded` becomes true as the last thing that it does.
void retire(std::thread thread, std::shared_ptr<std::atomic<bool>> hasEnded);

// Made, asked and ended by one thread.
template <class Result> class Background {
public:
    Background() = default;
    ~Background() { abandon(); }
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    // Calls work(isUnwanted) on a thread of its own, or at once with `isBeside` false. It may give up when the flag is
    // set. What it throws makes it a work without a result.
    template <class Work> void start(Work work, bool isBeside) {
        abandon();
        state_ = std::make_shared<State>();
        auto run = [state = state_, work = std::move(work)]() mutable {
            try {
                state->result.emplace(work(std::as_const(state->isUnwanted)));
            } catch (...) {
                state->result.reset();
            }
            if (state->isUnwanted)
                state->result.reset();
            state->hasEnded->store(true, std::memory_order_release);
        };
        if (isBeside)
            thread_ = std::thread(std::move(run));
        else
            run();
    }

    // Nobody wants the result of what was started any more.
    void abandon() {
        if (thread_.joinable()) {
            state_->isUnwanted = true;
            retire(std::move(thread_), state_->hasEnded);
        }
        state_.reset();
    }

    bool isStarted() const { return state_ != nullptr; }
    bool isReady() const { return isStarted() && state_->hasEnded->load(std::memory_order_acquire); }

    // Waits for the result of what was started; nothing where the work has failed.
    std::optional<Result> take() {
        if (thread_.joinable())
            thread_.join();
        std::optional<Result> result = std::move(state_->result);
        state_.reset();
        return result;
    }

private:
    struct State {
        std::atomic<bool> isUnwanted = false;
        std::shared_ptr<std::atomic<bool>> hasEnded = std::make_shared<std::atomic<bool>>(false);
        std::optional<Result> result;
    };

    std::shared_ptr<State> state_;
    std::thread thread_;
};
} // namespace sorvane
