// A progress bar on a terminal.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "standardstreams.h"

namespace sorvane {
// Draws nothing where streams.err is no terminal, and nothing for work that ends within half a second. Takes its line
// back when it is cleared or ends.
class ProgressBar {
public:
    using Clock = std::chrono::steady_clock;

    // `unit` names what is counted, in the plural: "files". `now` is the time, for tests.
    ProgressBar(const Streams& streams, std::int64_t total, std::string unit, Clock::time_point (*now)() = Clock::now);
    ~ProgressBar() { clear(); }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    // So much of `total` is done. Cheap enough to be told of every step.
    void show(std::int64_t done);
    void show(std::int64_t done, std::int64_t total);

    // Takes the bar away, for a line of output; the next show draws it again.
    void clear();

private:
    std::ostream& err_;
    bool isTerminal_;
    std::int64_t total_;
    std::string unit_;
    Clock::time_point (*now_)();
    Clock::time_point nextDrawing_;
    bool isDrawn_ = false;
};

// One line of the bar: "[#####     ]  50 %, 5 of 10 files".
std::string progressLine(std::int64_t done, std::int64_t total, const std::string& unit);
} // namespace sorvane
