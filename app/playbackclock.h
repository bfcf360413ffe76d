// Runs and stops the clock's timer, with the icon of the play button.
#pragma once

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
    void shuttleForward();
    void shuttleBackward();
    void stop();
    // Stops a clock that runs, however it does, and plays otherwise.
    void playOrStop();

    // The times that it covers with the engagements that are loaded.
    ClockRange range() const;

    Transport& transport() { return transport_; }

private:
    void run();

    ClockControls controls_;
    Transport transport_;
};

// Milliseconds as the slider counts them, truncated. Times that no int holds end at its limits.
int sliderValue(double seconds);

// The time of the engagement's last sample as the slider counts it.
int endOnSlider(const etxyz& engagement);
} // namespace sorvane
