// Runs and stops the clock's timer, with the icon of the play button.
#pragma once

#include <optional>

#include "transport.h"

class QDoubleSpinBox;
class QPushButton;
class QSlider;
class QTimer;
class etxyz;

namespace sorvane {
// The controls of the clock. Nothing here is owned.
struct ClockControls {
    QTimer& timer;
    QPushButton& playButton;
    const QSlider& slider; // to the end of the longest engagement
    const QDoubleSpinBox& box;
};

class PlaybackClock {
public:
    explicit PlaybackClock(const ClockControls& controls) : controls_(controls) {}

    // Runs forward at the playback speed, whatever the shuttle did.
    void play();
    // Runs as the shuttle does after `send`, one of the four ways that it is sent.
    void shuttle(void (Transport::*send)());
    void stop();
    // Stops a clock that runs, however it does, and plays otherwise.
    void playOrStop();
    bool isRunning() const;

    // The time from which a tick goes on. It is the box's; while the shuttle runs it is what the last tick came to
    // exactly, of which box and slider hold only so many digits.
    double time() const;
    // After a tick to `exactTime` has been shown.
    void arrivedAt(double exactTime);

    // The times that it covers with the engagements that are loaded.
    ClockRange range() const;

    Transport& transport() { return transport_; }

private:
    void run();

    ClockControls controls_;
    Transport transport_;
    double exactTime_ = 0.0;
    std::optional<double> shownTime_; // what the box makes of the exact time, since the last tick of the shuttle
};

// Milliseconds as the slider counts them, truncated. Times that no int holds end at its limits.
int sliderValue(double seconds);

// The time of the engagement's last sample as the slider counts it.
int endOnSlider(const etxyz& engagement);
} // namespace sorvane
