// Where a tick takes the time: forward at the playback speed, as the shuttle says, or round a loop.
#include "transport.h"

#include <algorithm>

#include "clocknumbers.h"

namespace sorvane {
namespace {
constexpr double kFastestShuttle = 32.0;
constexpr double kSlowestShuttle = 1.0 / 32.0;
} // namespace

void Transport::shuttle(double direction) {
    const double rate = shuttleRate_.value_or(0.0);
    shuttleRate_ = rate * direction > 0.0 ? std::clamp(2.0 * rate, -kFastestShuttle, kFastestShuttle) : direction;
}

void Transport::shuttleSlowly(double direction) {
    const double rate = shuttleRate_.value_or(0.0) * direction; // in this direction
    shuttleRate_ = direction * (rate > 0.0 ? std::max(0.5 * rate, kSlowestShuttle) : 0.5);
}

void Transport::setInPoint(double time) {
    inPoint_ = time;
    if (outPoint_ && *outPoint_ <= time)
        outPoint_.reset();
}

void Transport::setOutPoint(double time) {
    outPoint_ = time;
    if (inPoint_ >= time)
        inPoint_ = 0.0;
}

double Transport::outPoint(const ClockRange& range) const {
    const double end = std::min(range.end, range.latest);
    return std::min(outPoint_.value_or(end), end);
}

ClockTick Transport::next(double now, double speed, const ClockRange& range) const {
    const double rate = shuttleRate_.value_or(speed);
    // Behind the end there is nothing to go back through.
    return rate < 0.0 ? backward(std::min(now, range.end) + rate * kTickSeconds, range)
                      : forward(now + rate * kTickSeconds, range);
}

ClockTick Transport::forward(double next, const ClockRange& range) const {
    if (isInLoop(range) && next > outPoint(range))
        return {.time = inPoint_};
    // The end of the clock is the latest time, not the end of the engagement.
    if (next > range.end)
        return {.time = range.latest, .isAtEnd = true};
    return {.time = next};
}

ClockTick Transport::backward(double next, const ClockRange& range) const {
    if (isInLoop(range) && next < inPoint_)
        return {.time = outPoint(range)};
    if (next <= 0.0)
        return {.time = 0.0, .isAtStart = true};
    return {.time = next};
}
} // namespace sorvane
