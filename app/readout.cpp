// The numbers of the encounter over the view.
#include "readout.h"

#include <algorithm>

#include <QEvent>
#include <QFileInfo>
#include <QFontDatabase>
#include <QTimer>

#include "etxyz.h"
#include "loadedengagement.h"
#include "readouttext.h"

namespace sorvane {
namespace {
constexpr int kMargin = 8; // pixels
constexpr int kMeasuringMilliseconds = 500;
} // namespace

QString readoutText(const ReadoutSubject& subject, double framesPerSecond) {
    ReadoutFacts facts{.time = subject.time, .view = QString::fromLatin1(nameOf(subject.viewMode).shown)};
    if (subject.engagement != nullptr) {
        facts.engagement = QFileInfo(subject.engagement->path()).fileName();
        facts.samples = subject.engagement->data().samples.samples();
        facts.closest = subject.engagement->facts().closest;
    }
    QStringList lines = readoutLines(facts);
    lines << readoutLine(
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
