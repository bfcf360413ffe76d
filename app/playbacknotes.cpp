// What the view says about the speed of the clock, and when it stands though it runs.
#include "playbacknotes.h"

#include <cmath>

#include <QDoubleSpinBox>
#include <QSlider>

#include "clocknumbers.h"
#include "clockreach.h"
#include "keytable.h"
#include "measuretext.h"
#include "playbackclock.h"
#include "viewnotice.h"

namespace sorvane {
namespace {
// "x20", "x0.5", and of the shuttle's slow steps "x1/8".
QString factorText(double factor) {
    const double size = std::abs(factor);
    const double inverse = 1.0 / size;
    if (size < 1.0 && size > 0.0 && inverse == std::round(inverse) && inverse <= 32.0)
        return QStringLiteral("x1/%1").arg(inverse);
    return QStringLiteral("x%1").arg(size);
}
} // namespace

void PlaybackNotes::tellSpeed(double speed) const {
    parts_.notice.notify(QStringLiteral("Playback speed x%1").arg(speed));
}

void PlaybackNotes::tellShuttle() const {
    if (parts_.notice.isMarked())
        return; // the state of a recording matters more
    const double rate = parts_.clock.transport().shuttleRate().value_or(1.0);
    parts_.notice.notify(
        QStringLiteral("Shuttle %1 %2")
            .arg(rate < 0.0 ? QStringLiteral("backward") : QStringLiteral("forward"), factorText(rate)));
}

void PlaybackNotes::tellEndOfClock(double time) const {
    QString text = QStringLiteral("The clock ends at %1: %2 lets it run to the end of the engagement")
                       .arg(timeText(time), keyTexts(KeyCommand::ExtendClock));
    if (parts_.notice.isMarked())
        text += QStringLiteral(", %1 ends the recording").arg(keyTexts(KeyCommand::ToggleRecording));
    parts_.notice.notify(text);
}

void PlaybackNotes::beforeTick() {
    boxBefore_ = parts_.box.value();
    sliderBefore_ = parts_.slider.value();
}

double PlaybackNotes::secondsOfTick(double rate) const {
    const double seconds = (parts_.box.value() - boxBefore_) * (rate < 0.0 ? -1.0 : 1.0);
    const double most = 2.0 * std::abs(rate) * kTickSeconds + kSecondsPerSliderStep; // rounding included
    return seconds > 0.0 && seconds <= most ? seconds : 0.0;
}

void PlaybackNotes::afterTick(double speed) {
    const double now = parts_.box.value();
    if (toldAt_ != now)
        toldAt_.reset();
    const bool stands = now == boxBefore_ && parts_.slider.value() == sliderBefore_ && parts_.clock.isRunning();
    if (!stands || toldAt_)
        return;
    if (now >= parts_.box.maximum() && parts_.reach.isShort())
        tellEndOfClock(now);
    else if (!parts_.clock.transport().shuttleRate())
        parts_.notice.notify(QStringLiteral("At playback speed x%1 rounding holds the clock at %2: %3 plays slowly")
                                 .arg(speed)
                                 .arg(timeText(now), keyTexts(KeyCommand::SlowForward)));
    else
        return;
    toldAt_ = now;
}
} // namespace sorvane
