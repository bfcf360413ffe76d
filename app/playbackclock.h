// Runs and stops the clock's timer, with the icon of the play button.
#pragma once

#include "clockcourse.h"

class QPushButton;
class QTimer;
class etxyz;

class PlaybackClock {
public:
    PlaybackClock(QTimer& timer, QPushButton& playButton) : timer_(timer), playButton_(playButton) {}

    // Runs forward at the playback speed, whatever the shuttle did.
    void play();
    void shuttleForward();
    void shuttleBackward();
    void stop();

    ClockCourse& course() { return course_; }

private:
    void run();

    QTimer& timer_;
    QPushButton& playButton_;
    ClockCourse course_;
};

// Milliseconds as the slider counts them, truncated. Times that no int holds end at its limits.
int sliderValue(double seconds);

// The time of the engagement's last sample as the slider counts it.
int endOnSlider(const etxyz& engagement);
