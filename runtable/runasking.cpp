// Asks a database of runs on a thread of its own.
#include "runasking.h"

#include <utility>

namespace sorvane {
RunAsking::RunAsking(Answered answered)
    : answered_(std::move(answered)), thread_([this](const std::stop_token& stop) { work(stop); }) {}

RunAsking::~RunAsking() {
    thread_.request_stop();
    interrupt();
    thread_.join();
}

void RunAsking::ask(const std::string& database, RunQuestion question) {
    isAsking_ = true;
    ++number_;
    {
        const std::scoped_lock lock(mutex_);
        waiting_ = Asked{database, std::move(question), number_};
    }
    interrupt();
    isAsked_.notify_one();
}

void RunAsking::forget() {
    const std::scoped_lock lock(mutex_);
    isForgotten_ = true;
}

void RunAsking::interrupt() {
    const std::scoped_lock lock(mutex_);
    if (running_ != nullptr)
        running_->interrupt();
}

std::optional<RunAsking::Asked> RunAsking::next(const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    if (!isAsked_.wait(lock, stop, [this] { return waiting_.has_value(); }))
        return std::nullopt;
    if (std::exchange(isForgotten_, false))
        opened_.clear();
    return std::exchange(waiting_, std::nullopt);
}

Outcome<RunAnswer> RunAsking::answer(const Asked& asked) {
    if (opened_ != asked.database) {
        opened_.clear();
        query_.reset();
        Outcome<RunQuery> opened = RunQuery::open(asked.database);
        if (!opened)
            return opened.problem();
        query_ = *std::move(opened);
        opened_ = asked.database;
    }
    const auto setRunning = [this](const RunQuery* running) {
        const std::scoped_lock lock(mutex_);
        running_ = running;
    };
    setRunning(&*query_);
    Outcome<RunAnswer> answer = query_->ask(asked.question);
    setRunning(nullptr);
    return answer;
}

void RunAsking::work(const std::stop_token& stop) {
    while (const std::optional<Asked> asked = next(stop)) {
        Outcome<RunAnswer> found = answer(*asked);
        {
            const std::scoped_lock lock(mutex_);
            given_.emplace(std::move(found), asked->number);
        }
        QMetaObject::invokeMethod(
            this, [this] { take(); }, Qt::QueuedConnection);
    }
}

void RunAsking::take() {
    std::optional<Given> given;
    {
        const std::scoped_lock lock(mutex_);
        given = std::exchange(given_, std::nullopt);
    }
    if (!given || given->second != number_)
        return;
    isAsking_ = false;
    answered_(std::move(given->first));
}
} // namespace sorvane
