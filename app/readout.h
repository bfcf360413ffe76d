// The numbers of the encounter over the view.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QElapsedTimer>
#include <QStringList>

#include "measuretext.h"
#include "viewlabel.h"
#include "viewmode.h"

class QTimer;

namespace sorvane {
class LoadedEngagement;
class MeasuredEngagement;

// What the read-out describes.
struct ReadoutSubject {
    double time = 0.0;                            // seconds
    const LoadedEngagement* engagement = nullptr; // null when there is none to speak of
    ViewMode viewMode = ViewThreat;
    LengthUnit unit = LengthUnit::Unstated;
    double rate = 1.0; // what is asked of the clock, in engagement seconds per second; below 0 backward
    bool isPlaying = false;
    QStringList pointed{}; // what shows under the pointer
};

// What comes of it.
struct PlaybackMeasures {
    double rate = 0.0; // engagement seconds per second, the way that is asked for
    double framesPerSecond = 0.0;
};

// The lines of the read-out. What is not measured shows as a dash while the clock runs.
QString readoutText(const ReadoutSubject& subject, const std::optional<PlaybackMeasures>& measures);

// The values are kept by the user's preferences.
enum class ReadoutCorner { LowerLeft, LowerRight, UpperRight, UpperLeft };

// Hidden at first.
class ViewReadout : public ViewLabel {
public:
    using Subject = std::function<ReadoutSubject()>;

    ViewReadout(QWidget& view, Subject subject);

    void toggle();
    void setCorner(ReadoutCorner corner);
    ReadoutCorner corner() const { return corner_; }
    // The time or the view has changed. Costs nothing while the label is hidden.
    void refresh();
    // A tick of the clock has gone so many seconds the way that is asked for.
    void tick(double seconds) { ticked_ += seconds; }

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void layOut() override;

private:
    void measure();
    void startMeasuring(bool isPlaying);

    QWidget& view_;
    Subject subject_;
    std::shared_ptr<const MeasuredEngagement> measured_; // is told of from tick to tick
    ReadoutCorner corner_ = ReadoutCorner::LowerLeft;
    QTimer* measuring_;
    QElapsedTimer sinceMeasured_;
    bool isMeasuringPlayback_ = false;
    int frames_ = 0;      // drawn since then
    double ticked_ = 0.0; // seconds, likewise
    std::optional<PlaybackMeasures> measures_;
};
} // namespace sorvane
