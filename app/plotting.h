// The plot window's place in the viewer: what it can plot, and when it has to hear of a change.
#pragma once

#include <functional>

#include <QObject>

#include "engagementlist.h"
#include "keyfilter.h"
#include "measuretext.h"
#include "plotwindow.h"

class AircraftWidget;
class QDoubleSpinBox;

namespace sorvane {
class CurrentEngagement;
class PlaybackClock;
class TargetRadiation;
class TimeSteps;

class Plotting : public QObject {
public:
    // The parts that it goes by. Nothing here is owned.
    struct Parts {
        QWidget& window;
        const EngagementList& engagements;
        const CurrentEngagement& current;
        AircraftWidget& view;
        QDoubleSpinBox& box;
        TimeSteps& steps;
        PlaybackClock& clock;
        std::function<LengthUnit()> unit; // that lengths are told in
        KeyFilter::Run runKey;            // of the plot window, which has the viewer's keys
    };

    Plotting(const Parts& parts, QObject* parent);
    ~Plotting() override;

    // Opens the window below the viewer, or closes it.
    void toggle();
    // Another engagement may be the current one.
    void refresh();
    // There may be another unit.
    void showUnit();
    // The loop's points have changed, or whether it counts.
    void showLoop();

private:
    void open();
    std::vector<PlotRadiation> radiationsOf(const std::vector<EngagementId>& ids);
    void setFlareIntensity(double intensity);

    Parts parts_;
    PlotWindow* plots_ = nullptr; // of the window's children
    TargetRadiation* radiation_;
};
} // namespace sorvane
