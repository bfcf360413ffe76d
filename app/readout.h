// The numbers of the encounter over the view.
#pragma once

#include <functional>

#include <QElapsedTimer>
#include <QLabel>

#include "viewmode.h"

class QTimer;

namespace sorvane {
class LoadedEngagement;

// What the read-out describes.
struct ReadoutSubject {
    double time = 0.0;                            // seconds
    const LoadedEngagement* engagement = nullptr; // null when there is none to speak of
    ViewMode viewMode = ViewThreat;
};

// The lines of the read-out. Zero frames per second show as a dash.
QString readoutText(const ReadoutSubject& subject, double framesPerSecond);

// A label over the lower left corner of the view, hidden at first. Grabbed frames, and with them pictures and movies,
// don't contain it. It watches the view's events only while it is shown.
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
} // namespace sorvane
