// The numbers of the encounter over the view.
#include "readout.h"

#include <algorithm>
#include <cmath>

#include <QEvent>
#include <QFontDatabase>
#include <QTimer>

#include "loadedengagement.h"
#include "readouttext.h"

namespace sorvane {
namespace {
constexpr int kMeasuringMilliseconds = 500;

QString askedText(double rate) {
    return QStringLiteral("x%1").arg(std::abs(rate)) + (rate < 0.0 ? QStringLiteral(" backward") : QString());
}

QString achievedText(double rate) {
    return QStringLiteral("x%1").arg(rate, 0, 'f', 2);
}
} // namespace

QString readoutText(const ReadoutSubject& subject, const std::optional<PlaybackMeasures>& measures) {
    std::shared_ptr<const MeasuredEngagement> measured;
    ReadoutFacts facts{.time = subject.time, .view = QString::fromLatin1(nameOf(subject.viewMode).shown)};
    if (subject.engagement != nullptr) {
        facts.engagement = subject.engagement->name();
        measured = subject.engagement->measured(subject.unit);
        facts.measured = measured.get();
        facts.closest = subject.engagement->facts().closest;
    }
    QStringList lines = readoutLines(facts);
    const bool isMeasured = subject.isPlaying && measures;
    QString speed = askedText(subject.rate);
    if (subject.isPlaying)
        speed += QStringLiteral(", achieved %1").arg(isMeasured ? achievedText(measures->rate) : noNumber());
    lines << readoutLine("Playback speed", speed)
          << readoutLine(
                 "Frames per second", isMeasured ? QString::number(measures->framesPerSecond, 'f', 1) : noNumber());
    return (lines + subject.pointed).join(u'\n');
}

ViewReadout::ViewReadout(QWidget& view, Subject subject)
    : ViewLabel(view, QStringLiteral("viewReadout")), view_(view), subject_(std::move(subject)),
      measuring_(new QTimer(this)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setColour(QLatin1String("#e0e0e0"));
    connect(measuring_, &QTimer::timeout, this, [this] { measure(); });
}

void ViewReadout::toggle() {
    if (isVisibleTo(&view_)) {
        measuring_->stop();
        hide();
        measured_.reset();
        return;
    }
    startMeasuring(false);
    measuring_->start(kMeasuringMilliseconds);
    show();
    refresh();
}

void ViewReadout::setCorner(ReadoutCorner corner) {
    corner_ = corner;
    layOut();
}

void ViewReadout::refresh() {
    if (!isVisibleTo(&view_))
        return;
    const ReadoutSubject subject = subject_();
    measured_ = subject.engagement == nullptr ? nullptr : subject.engagement->measured(subject.unit);
    // In a right corner, numbers that get shorter and longer would move all.
    setMinimumWidth(subject.isPlaying ? width() : 0);
    setText(readoutText(subject, measures_));
    layOut();
}

bool ViewReadout::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint)
        ++frames_;
    return ViewLabel::eventFilter(watched, event);
}

// Of a stretch in which the clock ran all the time.
void ViewReadout::measure() {
    const bool isPlaying = subject_().isPlaying;
    const double seconds = static_cast<double>(std::max<qint64>(sinceMeasured_.elapsed(), 1)) / 1000.0;
    const PlaybackMeasures measures{.rate = ticked_ / seconds, .framesPerSecond = frames_ / seconds};
    const bool isMeasured = isPlaying && isMeasuringPlayback_;
    startMeasuring(isPlaying);
    if (isMeasured)
        measures_ = measures;
    refresh();
}

void ViewReadout::startMeasuring(bool isPlaying) {
    sinceMeasured_.start();
    isMeasuringPlayback_ = isPlaying;
    frames_ = 0;
    ticked_ = 0.0;
    measures_.reset();
}

void ViewReadout::layOut() {
    adjustSize();
    const bool isLeft = corner_ == ReadoutCorner::LowerLeft || corner_ == ReadoutCorner::UpperLeft;
    const bool isLower = corner_ == ReadoutCorner::LowerLeft || corner_ == ReadoutCorner::LowerRight;
    move(
        isLeft ? kViewMargin : view_.width() - width() - kViewMargin,
        isLower ? view_.height() - height() - kViewMargin : kBelowNotice);
}
} // namespace sorvane
