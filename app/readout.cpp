// The numbers of the encounter over the view.
#include "readout.h"

#include <algorithm>
#include <cmath>

#include <QEvent>
#include <QFileInfo>
#include <QFontDatabase>
#include <QTimer>

#include "clocknumbers.h"
#include "etxyz.h"
#include "loadedengagement.h"
#include "measuretext.h"

namespace sorvane {
namespace {
constexpr int kMargin = 8; // pixels
constexpr int kMeasuringMilliseconds = 500;
constexpr int kLabelWidth = 18; // characters
constexpr LengthUnit kUnit = LengthUnit::Unstated;

QString line(const char* label, const QString& value) {
    return QString::fromLatin1(label).leftJustified(kLabelWidth) + value;
}

// The box of the time shows whole milliseconds, of which the one nearest to an end stands for it.
double boundedTime(std::span<const Sample> samples, double time) {
    const double bounded = std::clamp(time, samples.front().time, samples.back().time);
    return std::abs(bounded - time) <= kSecondsPerSliderStep / 2.0 ? bounded : time;
}

QStringList encounterLines(const LoadedEngagement& engagement, double time) {
    const std::span<const Sample> samples = engagement.data().samples.samples();
    const std::optional<Encounter> now = encounterAt(samples, boundedTime(samples, time));
    const std::optional<ClosestApproach>& closest = engagement.facts().closest;
    QStringList lines{line("Engagement", QFileInfo(engagement.path()).fileName())};
    if (now)
        lines << line("Range", lengthText(now->range, kUnit))
              << line("Closing speed", speedText(now->closingSpeed, kUnit));
    else if (time < samples.front().time)
        lines << line("Encounter", QStringLiteral("begins at %1").arg(timeText(samples.front().time)));
    else
        lines << line("Encounter", QStringLiteral("ended at %1").arg(timeText(samples.back().time)));
    if (closest)
        lines << line(
            "Closest approach",
            QStringLiteral("%1 at %2").arg(lengthText(closest->range, kUnit), timeText(closest->time)));
    if (now)
        lines << line("Aspect angle", angleText(now->aspectDegrees));
    return lines;
}
} // namespace

QString readoutText(const ReadoutSubject& subject, double framesPerSecond) {
    QStringList lines{line("Time", timeText(subject.time))};
    if (subject.engagement != nullptr)
        lines << encounterLines(*subject.engagement, subject.time);
    lines << line("View", QString::fromLatin1(nameOf(subject.viewMode).shown));
    lines << line(
        "Frames per second", framesPerSecond > 0.0 ? QString::number(framesPerSecond, 'f', 1) : QStringLiteral("–"));
    return lines.join(u'\n');
}

ViewReadout::ViewReadout(QWidget& view, Subject subject)
    : QLabel(&view), view_(view), subject_(std::move(subject)), measuring_(new QTimer(this)) {
    setObjectName(QStringLiteral("viewReadout"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setTextFormat(Qt::PlainText);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    setStyleSheet(QStringLiteral("color: #e0e0e0; background: rgba(0, 0, 0, 190);"));
    setMargin(kMargin / 2);
    hide();
    connect(measuring_, &QTimer::timeout, this, [this] { measureFrames(); });
}

void ViewReadout::toggle() {
    if (isVisibleTo(&view_)) {
        measuring_->stop();
        view_.removeEventFilter(this);
        hide();
        return;
    }
    view_.installEventFilter(this);
    frames_ = 0;
    framesPerSecond_ = 0.0;
    sinceMeasured_.start();
    measuring_->start(kMeasuringMilliseconds);
    show();
    refresh();
}

void ViewReadout::refresh() {
    if (!isVisibleTo(&view_))
        return;
    setText(readoutText(subject_(), framesPerSecond_));
    adjustSize();
    moveToCorner();
}

bool ViewReadout::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint)
        ++frames_;
    else if (event->type() == QEvent::Resize)
        moveToCorner();
    return QLabel::eventFilter(watched, event);
}

void ViewReadout::measureFrames() {
    framesPerSecond_ = frames_ * 1000.0 / static_cast<double>(std::max<qint64>(sinceMeasured_.restart(), 1));
    frames_ = 0;
    refresh();
}

void ViewReadout::moveToCorner() {
    move(kMargin, view_.height() - height() - kMargin);
}
} // namespace sorvane
