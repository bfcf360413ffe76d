// Runs and stops the clock's timer, with the icon of the play button.
#include "playbackclock.h"

#include <algorithm>

#include <QIcon>
#include <QPushButton>
#include <QTimer>

#include "etxyz.h"

namespace {
constexpr int kTickMilliseconds = 33;
constexpr double kEndOfTime = 1.0e9; // later than any sample
} // namespace

void PlaybackClock::play() {
    course_.leaveShuttle();
    run();
}

void PlaybackClock::shuttleForward() {
    course_.shuttleForward();
    run();
}

void PlaybackClock::shuttleBackward() {
    course_.shuttleBackward();
    run();
}

void PlaybackClock::run() {
    timer_.start(kTickMilliseconds);
    playButton_.setIcon(QIcon(QStringLiteral(":/images/pause.svg")));
}

void PlaybackClock::stop() {
    timer_.stop();
    course_.leaveShuttle();
    playButton_.setIcon(QIcon(QStringLiteral(":/images/play.svg")));
}

int sliderValue(double seconds) {
    return static_cast<int>(std::clamp(seconds * 1000.0, -2147483648.0, 2147483647.0));
}

int endOnSlider(const etxyz& engagement) {
    return sliderValue(engagement.NearestKeyframe(kEndOfTime).time);
}
