// Where a tick takes the time: forward at the playback speed, as the shuttle says, or round a loop.
#pragma once

#include <optional>

namespace sorvane {
// The range of times that the clock covers, in seconds.
struct ClockRange {
    double end = 0.0;    // of the longest engagement: a tick past it ends the playback
    double latest = 0.0; // the largest time there is, which then shows
};

struct ClockTick {
    double time = 0.0;
    bool isAtEnd = false;   // the playback has ended, at the latest time
    bool isAtStart = false; // the shuttle has come back to 0 and stops
};

class Transport {
public:
    // The shuttle has a rate of its own, in engagement seconds per second: real time at first, doubled each time it is
    // sent the way that it goes already, up to 32 times; sent slowly, half of real time at first and halved, down to
    // 1/32.
    void shuttleForward() { shuttle(1.0); }
    void shuttleBackward() { shuttle(-1.0); }
    void shuttleSlowlyForward() { shuttleSlowly(1.0); }
    void shuttleSlowlyBackward() { shuttleSlowly(-1.0); }
    void leaveShuttle() { shuttleRate_.reset(); }
    std::optional<double> shuttleRate() const { return shuttleRate_; }

    // The points of the loop, at first the start and the end. Each takes the other one back to there when it would not
    // leave a length between them.
    void setInPoint(double time);
    void setOutPoint(double time);
    void toggleLoop() { isLooping_ = !isLooping_; }
    bool isLooping() const { return isLooping_; }
    double inPoint() const { return inPoint_; }
    double outPoint(const ClockRange& range) const;

    // The tick that follows the time `now` at `speed`, in engagement seconds per second.
    ClockTick next(double now, double speed, const ClockRange& range) const;

private:
    void shuttle(double direction);
    void shuttleSlowly(double direction);
    bool isInLoop(const ClockRange& range) const { return isLooping_ && inPoint_ < outPoint(range); }
    ClockTick forward(double next, const ClockRange& range) const;
    ClockTick backward(double next, const ClockRange& range) const;

    std::optional<double> shuttleRate_;
    double inPoint_ = 0.0;
    std::optional<double> outPoint_; // the end without one
    bool isLooping_ = false;
};
} // namespace sorvane
