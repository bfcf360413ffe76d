// What the view says about the speed of the clock, and when it stands though it runs.
#pragma once

#include <optional>

class QDoubleSpinBox;
class QSlider;

namespace sorvane {
class ClockReach;
class PlaybackClock;
class ViewNotice;

// The parts that it goes by. Nothing here is owned.
struct PlaybackParts {
    const QDoubleSpinBox& box;
    const QSlider& slider;
    PlaybackClock& clock;
    const ClockReach& reach;
    ViewNotice& notice;
};

class PlaybackNotes {
public:
    explicit PlaybackNotes(const PlaybackParts& parts) : parts_(parts) {}

    // Engagement seconds per second.
    void tellSpeed(double speed) const;
    void tellShuttle() const;
    // Before and after each tick of a clock at this speed.
    void beforeTick();
    void afterTick(double speed);
    // How many seconds that tick has gone the way that `rate` says; none where it jumped, such as round a loop.
    double secondsOfTick(double rate) const;

private:
    void tellEndOfClock(double time) const;

    PlaybackParts parts_;
    double boxBefore_ = 0.0;
    int sliderBefore_ = 0;
    std::optional<double> toldAt_; // the time at which the clock stands and that has been said
};
} // namespace sorvane
