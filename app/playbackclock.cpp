// Runs and stops the clock's timer, with the icon of the play button.
#include "playbackclock.h"

#include <algorithm>

#include <QDoubleSpinBox>
#include <QIcon>
#include <QPushButton>
#include <QSlider>
#include <QTimer>

#include "clocknumbers.h"
#include "etxyz.h"

namespace sorvane {
void PlaybackClock::play() {
    transport_.leaveShuttle();
    run();
}

void PlaybackClock::shuttle(void (Transport::*send)()) {
    (transport_.*send)();
    run();
}

bool PlaybackClock::isRunning() const {
    return controls_.timer.isActive();
}

double PlaybackClock::time() const {
    const double shown = controls_.box.value();
    return transport_.shuttleRate() && shownTime_ == shown ? exactTime_ : shown;
}

void PlaybackClock::arrivedAt(double exactTime) {
    exactTime_ = std::min(exactTime, controls_.box.maximum());
    shownTime_ = controls_.box.value();
}

void PlaybackClock::run() {
    controls_.timer.start(kTickMilliseconds);
    controls_.playButton.setIcon(QIcon(QStringLiteral(":/images/pause.svg")));
}

void PlaybackClock::stop() {
    controls_.timer.stop();
    transport_.leaveShuttle();
    controls_.playButton.setIcon(QIcon(QStringLiteral(":/images/play.svg")));
}

void PlaybackClock::playOrStop() {
    if (controls_.timer.isActive())
        stop();
    else
        play();
}

ClockRange PlaybackClock::range() const {
    return {.end = controls_.slider.maximum() * kSecondsPerSliderStep, .latest = controls_.box.maximum()};
}

int sliderValue(double seconds) {
    return static_cast<int>(std::clamp(seconds * kSliderStepsPerSecond, -2147483648.0, 2147483647.0));
}

int endOnSlider(const etxyz& engagement) {
    return sliderValue(engagement.NearestKeyframe(kEndOfTime).time);
}
} // namespace sorvane
