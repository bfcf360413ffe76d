// What the window offers beyond its form: keys, read-out, dropped files, reloading.
#pragma once

#include <QList>

#include "currentengagement.h"
#include "factsofengagements.h"
#include "filereload.h"
#include "filewatch.h"
#include "keytable.h"
#include "readout.h"

class KeyHelp;
class PlaybackClock;
class TimeSteps;
class ViewNotice;
class new_sorvane;
namespace Ui {
class new_sorvane;
}

// The parts of the window that the features work on. Nothing here is owned.
struct WindowParts {
    new_sorvane& window;
    Ui::new_sorvane& form;
    QList<etxyz*>& engagements;
    PlaybackClock& clock;
    ViewNotice& notice;
};

// Joins the features to the window and runs the commands of its keys.
class WindowFeatures {
public:
    explicit WindowFeatures(const WindowParts& parts);
    WindowFeatures(const WindowFeatures&) = delete;
    WindowFeatures& operator=(const WindowFeatures&) = delete;

    // An engagement has been registered; its file had this stamp before it was read.
    void engagementAdded(const etxyz& engagement, const FileStamp& stamp);
    // A view of the engagement with this sub-menu has been chosen.
    void viewChosen(const QMenu* menu);

private:
    void run(KeyCommand command);
    ReadoutSubject readoutSubject();
    void stepToSample(bool isForward);
    void stepToEvent(bool isForward);
    void goToClosestApproach();
    void setLoopPoint(bool isInPoint);
    void toggleLoop();
    void tellLoop();
    void chooseView(int entry);
    void reload();
    void tellChanged(const QStringList& paths);

    WindowParts parts_;
    CurrentEngagement current_;
    FactsOfEngagements facts_;
    FileWatch watch_;
    FileReload reload_;
    TimeSteps* steps_;     // of the window's children
    ViewReadout* readout_; // of the view's children
    KeyHelp* help_;        // of the window's children
};
