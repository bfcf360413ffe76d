// A progress bar on a terminal.
#include "progressbar.h"

#include <algorithm>
#include <utility>

namespace sorvane {
namespace {
constexpr std::chrono::milliseconds kDelay{500};
constexpr std::chrono::milliseconds kPause{100};
constexpr std::int64_t kWidth = 40;
} // namespace

ProgressBar::ProgressBar(const Streams& streams, std::int64_t total, std::string unit, Clock::time_point (*now)())
    : err_(streams.err), isTerminal_(streams.isErrTerminal), total_(total), unit_(std::move(unit)), now_(now),
      nextDrawing_(now() + kDelay) {}

void ProgressBar::show(std::int64_t done) {
    if (!isTerminal_ || now_() < nextDrawing_)
        return;
    // Back to the line's beginning; what is left of a longer line is erased.
    err_ << '\r' << progressLine(done, total_, unit_) << "\x1b[K" << std::flush;
    nextDrawing_ = now_() + kPause;
    isDrawn_ = true;
}

void ProgressBar::show(std::int64_t done, std::int64_t total) {
    total_ = total;
    show(done);
}

void ProgressBar::clear() {
    if (!isDrawn_)
        return;
    err_ << "\r\x1b[K" << std::flush;
    nextDrawing_ = now_();
    isDrawn_ = false;
}

std::string progressLine(std::int64_t done, std::int64_t total, const std::string& unit) {
    const double fraction =
        total > 0 ? std::clamp(static_cast<double>(done) / static_cast<double>(total), 0.0, 1.0) : 0.0;
    const auto filled = static_cast<std::size_t>(fraction * kWidth);
    std::string percent = std::to_string(static_cast<int>(fraction * 100.0));
    percent.insert(0, 3 - std::min<std::size_t>(percent.size(), 3), ' ');
    std::string line = "[";
    line.append(filled, '#').append(kWidth - filled, ' ').append("] ").append(percent).append(" %, ");
    return line.append(std::to_string(done)).append(" of ").append(std::to_string(total)).append(" ").append(unit);
}
} // namespace sorvane
