// What the view says about the loading of files.
#include "loadnotice.h"

#include <QMouseEvent>
#include <QTimer>

namespace sorvane {
namespace {
constexpr int kShownMilliseconds = 60000;
constexpr qsizetype kMostLines = 6;
} // namespace

LoadNotice::LoadNotice(QWidget& view) : ViewLabel(view, QStringLiteral("loadNotice")), passing_(new QTimer(this)) {
    setCursor(Qt::PointingHandCursor);
    setColour(QLatin1String("#ffd54f"));
    move(kViewMargin, kBelowNotice);
    passing_->setSingleShot(true);
    connect(passing_, &QTimer::timeout, this, [this] { clearLines(); });
}

void LoadNotice::setLines(const QStringList& lines) {
    lines_ = lines;
    passing_->start(kShownMilliseconds);
    arrange();
}

void LoadNotice::setLast(const QString& line) {
    last_ = line;
    passing_->start(kShownMilliseconds);
    arrange();
}

void LoadNotice::setProgress(const QString& text) {
    progress_ = text;
    arrange();
}

void LoadNotice::mousePressEvent(QMouseEvent* event) {
    event->accept(); // the camera doesn't turn by it
    clearLines();
}

void LoadNotice::clearLines() {
    passing_->stop();
    lines_.clear();
    last_.clear();
    arrange();
    if (cleared_)
        cleared_();
}

void LoadNotice::arrange() {
    QStringList shown = lines_.mid(0, kMostLines);
    if (lines_.size() > kMostLines)
        shown << QStringLiteral("and %1 more, which the terminal tells").arg(lines_.size() - kMostLines);
    if (!last_.isEmpty())
        shown << last_;
    if (!shown.isEmpty())
        shown << QStringLiteral("A click closes this.");
    if (!progress_.isEmpty())
        shown.prepend(progress_);
    showText(shown.join(u'\n'));
}
} // namespace sorvane
