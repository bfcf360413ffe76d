// A short text over the view that never gets into pictures and movies.
#pragma once

#include "viewlabel.h"

class QTimer;

namespace sorvane {
// A label over the top left corner of a widget; it takes no mouse events.
class ViewNotice : public ViewLabel {
public:
    explicit ViewNotice(QWidget& view);

    // Shows what the user should notice, for some seconds. It takes the place of a mark, which comes back after it.
    void notify(const QString& text);
    // The same of what is only true of the time on show: it goes when that changes.
    void notifyOfMoment(const QString& text);
    // Another time is on show.
    void momentHasPassed();
    // Shows a mark until it is cleared: the state of a recording.
    void mark(const QString& text);
    void clearMark() { mark(QString()); }
    bool isMarked() const { return !mark_.isEmpty(); }

private:
    void showMark();
    void place(const QString& text, QLatin1String colour);

    QTimer* noticeTimer_;
    bool isOfMoment_ = false;
    QString mark_;
};
} // namespace sorvane
