// The numbers of the encounter over the view.
#pragma once

#include <functional>

#include <QElapsedTimer>
#include <QLabel>

#include "viewmode.h"

class LoadedEngagement;
class QTimer;

// What the read-out says at one instant.
struct ReadoutSubject {
    double time = 0.0;                            // seconds
    const LoadedEngagement* engagement = nullptr; // null when there is none to speak of
    ViewMode viewMode = ViewThreat;
};

// The lines of the read-out. No frames per second stand for a view that draws none.
QString readoutText(const ReadoutSubject& subject, double framesPerSecond);

// A label over the lower left corner of the view, hidden at first, that stays out of pictures and movies. While it is
// hidden it sees no event of the view.
class ViewReadout : public QLabel {
public:
    using Subject = std::function<ReadoutSubject()>;

    ViewReadout(QWidget& view, Subject subject);

    void toggle();
    // The time or the view has changed. Costs nothing while the label is hidden.
    void refresh();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void measureFrames();
    void moveToCorner();

    QWidget& view_;
    Subject subject_;
    QTimer* measuring_;
    QElapsedTimer sinceMeasured_;
    int frames_ = 0; // drawn since then
    double framesPerSecond_ = 0.0;
};
