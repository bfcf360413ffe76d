// A short text over the view that never gets into pictures and movies.
#include "viewnotice.h"

#include <QTimer>

namespace sorvane {
namespace {
constexpr int kNoticeMilliseconds = 6000;
constexpr QLatin1String kNoticeColour("#ffd54f");
constexpr QLatin1String kMarkColour("#ff5252");
} // namespace

ViewNotice::ViewNotice(QWidget& view) : ViewLabel(view, QStringLiteral("viewNotice")), noticeTimer_(new QTimer(this)) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    move(kViewMargin, kViewMargin);
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
    setColour(colour);
    showText(text);
}
} // namespace sorvane
