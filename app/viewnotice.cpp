// A short text over the view that never gets into pictures and movies.
#include "viewnotice.h"

#include <QTimer>

namespace sorvane {
namespace {
constexpr int kNoticeMilliseconds = 6000;
constexpr int kMargin = 8; // pixels
constexpr QLatin1String kNoticeColour("#ffd54f");
constexpr QLatin1String kMarkColour("#ff5252");
} // namespace

ViewNotice::ViewNotice(QWidget& view) : QLabel(&view), noticeTimer_(new QTimer(this)) {
    setObjectName(QStringLiteral("viewNotice"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setTextFormat(Qt::PlainText);
    setMargin(kMargin / 2);
    move(kMargin, kMargin);
    hide();
    noticeTimer_->setSingleShot(true);
    connect(noticeTimer_, &QTimer::timeout, this, [this] { showMark(); });
}

void ViewNotice::notify(const QString& text) {
    isOfMoment_ = false;
    noticeTimer_->start(kNoticeMilliseconds);
    place(text, kNoticeColour);
}

void ViewNotice::notifyOfMoment(const QString& text) {
    notify(text);
    isOfMoment_ = true;
}

void ViewNotice::momentHasPassed() {
    if (!isOfMoment_)
        return;
    isOfMoment_ = false;
    noticeTimer_->stop();
    showMark();
}

void ViewNotice::mark(const QString& text) {
    mark_ = text;
    if (!noticeTimer_->isActive())
        showMark();
}

void ViewNotice::showMark() {
    place(mark_, kMarkColour);
}

void ViewNotice::place(const QString& text, QLatin1String colour) {
    // A recording changes its mark with every frame; a style sheet is too dear for that.
    if (colour_ != colour) {
        colour_ = colour;
        setStyleSheet(QStringLiteral("color: %1; background: rgba(0, 0, 0, 190);").arg(colour_));
    }
    setText(text);
    // Wrapped only where it has to be.
    const int room = parentWidget()->width() - 2 * kMargin;
    setMaximumWidth(room);
    setWordWrap(false);
    setWordWrap(sizeHint().width() > room);
    adjustSize();
    setVisible(!text.isEmpty());
}
} // namespace sorvane
