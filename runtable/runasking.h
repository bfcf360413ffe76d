// Asks a database of runs on a thread of its own.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>

#include <QObject>

#include "runquery.h"

namespace sorvane {
// Only the question asked last is answered; one before it is given up.
class RunAsking : public QObject {
public:
    // Called in the thread that this lives in, from its event loop.
    using Answered = std::function<void(Outcome<RunAnswer>)>;

    explicit RunAsking(Answered answered);
    ~RunAsking() override;

    // `database`: what RunQuery opens; anew for each name, and for a name again after forget().
    void ask(const std::string& database, RunQuestion question);
    // Without an answer yet.
    bool isAsking() const { return isAsking_; }
    void forget();

private:
    struct Asked {
        std::string database;
        RunQuestion question;
        int number = 0;
    };

    using Given = std::pair<Outcome<RunAnswer>, int>; // an answer and the number of its question

    void work(const std::stop_token& stop);
    void take();
    std::optional<Asked> next(const std::stop_token& stop);
    Outcome<RunAnswer> answer(const Asked& asked);
    void interrupt();

    Answered answered_;
    bool isAsking_ = false;
    int number_ = 0;   // of the last question
    std::mutex mutex_; // over the five below
    std::condition_variable_any isAsked_;
    std::optional<Asked> waiting_;
    const RunQuery* running_ = nullptr; // null between two questions
    bool isForgotten_ = false;
    std::optional<Given> given_;
    std::optional<RunQuery> query_; // of the thread, as its name
    std::string opened_;
    std::jthread thread_; // ends before what it uses
};
} // namespace sorvane
