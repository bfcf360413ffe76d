// What the window offers beyond its form: keys, read-out, reloading.
#pragma once

#include <functional>

#include "currentengagement.h"
#include "displaykeys.h"
#include "engagementkeys.h"
#include "filewatch.h"
#include "keytable.h"
#include "loadreport.h"
#include "playbacknotes.h"
#include "readout.h"
#include "sideviews.h"

class QMainWindow;
namespace Ui {
class new_sorvane;
}

namespace sorvane {
class BodyNames;
class ClockReach;
class GhostDisplay;
class KeyHelp;
class LoadNotice;
class PlaybackClock;
class Plotting;
class RunTables;
class TimeMarks;
class TimeSteps;
class Transport;
class ViewNotice;

// The parts of the window that the features work on. Nothing here is owned.
struct WindowParts {
    QMainWindow& window;
    Ui::new_sorvane& form;
    EngagementList& engagements;
    PlaybackClock& clock;
    ViewNotice& notice;
    std::function<void()> toggleRecording;
    std::function<void(const QStringList& paths)> openFiles; // of any kind
};

// Joins the features to the window and runs the commands of its keys.
class WindowFeatures {
public:
    explicit WindowFeatures(const WindowParts& parts);
    WindowFeatures(const WindowFeatures&) = delete;
    WindowFeatures& operator=(const WindowFeatures&) = delete;

    // A view of the engagement has been chosen.
    void viewChosen(EngagementId id);
    // A file has been loaded; without data when it gave no engagement.
    void fileLoaded(const QString& path, const etxyz* loaded) { report_.tell(path, loaded); }
    void speedChosen(double speed);
    // Shows a database of runs.
    void showRuns(const QString& database);
    // Around each tick of the clock.
    void beforeTick() { playback_.beforeTick(); }
    void afterTick(double speed);

    LoadNotice& loadNotice() { return *loads_; }

private:
    void run(KeyCommand command);
    ReadoutSubject readoutSubject() const;
    double askedRate() const;
    void showTime();
    // Another engagement may be the current one, or have other samples.
    void showCurrent();
    void stepToSample(bool isForward);
    void stepToEvent(bool isForward);
    void goToClosestApproach();
    void tellNoEvent(bool isForward);
    void shuttle(void (Transport::*send)());
    void setLoopPoint(bool isInPoint);
    void toggleLoop();
    void tellLoop();
    void chooseView(ViewMode mode);
    void tellWhenNothingIsInSight();
    void reload();
    void tellChanged(const QStringList& paths);

    WindowParts parts_;
    CurrentEngagement current_;
    EngagementKeys engagementKeys_;
    FileWatch watch_;
    TimeSteps* steps_; // of the window's children
    TimeMarks* marks_; // of the slider's children
    Plotting* plots_;  // of the window's children
    RunTables* runs_;  // of the window's children
    SideViews sides_;
    ViewReadout* readout_; // of the view's children
    BodyNames* names_;     // of the view's children
    DisplayKeys display_;
    GhostDisplay* ghosts_; // of the window's children
    KeyHelp* help_;        // of the window's children
    LoadNotice* loads_;    // of the view's children
    LoadReport report_;
    ClockReach* reach_; // of the window's children
    PlaybackNotes playback_;
    double speed_ = 1.0; // of the menu, engagement seconds per second
};
} // namespace sorvane
