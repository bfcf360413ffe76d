// What the window offers beyond its form: keys, read-out, reloading.
#include "windowfeatures.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>

#include "accessiblenames.h"
#include "aircraftwidget.h"
#include "bodynames.h"
#include "camerakeys.h"
#include "clockreach.h"
#include "emptyhint.h"
#include "engagementmenu.h"
#include "etxyz.h"
#include "filereload.h"
#include "focusframe.h"
#include "ghostdisplay.h"
#include "keyfilter.h"
#include "keyhelp.h"
#include "loadnotice.h"
#include "measuretext.h"
#include "playbackclock.h"
#include "plotting.h"
#include "projection.h"
#include "runtables.h"
#include "selection.h"
#include "timemarks.h"
#include "timesteps.h"
#include "ui_new_sorvane.h"
#include "viewnotice.h"

namespace sorvane {
namespace {
StepDirection direction(bool isForward) {
    return isForward ? StepDirection::Forward : StepDirection::Back;
}

QString fileNames(const QStringList& paths) {
    QStringList names;
    for (const QString& path : paths)
        names << QFileInfo(path).fileName();
    names.removeDuplicates();
    return names.join(QStringLiteral(", "));
}
} // namespace

WindowFeatures::WindowFeatures(const WindowParts& parts)
    : parts_(parts), current_(parts.engagements),
      engagementKeys_({parts.window, parts.engagements, current_, *parts.form.glWidget, parts.notice}),
      watch_(parts.engagements, [this](const QStringList& paths) { tellChanged(paths); }),
      steps_(new TimeSteps(*parts.form.doubleSpinBox, *parts.form.horizontalSlider, &parts.window)),
      marks_(new TimeMarks(
          *parts.form.horizontalSlider,
          [this] {
              const LoadedEngagement* const engagement = current_.get();
              return timeMarks(
                  engagement == nullptr ? nullptr : &engagement->facts(), parts_.clock.transport(),
                  parts_.clock.range());
          })),
      plots_(new Plotting(
          {parts.window, parts.engagements, current_, *parts.form.glWidget, *parts.form.doubleSpinBox, *steps_,
           parts.clock, [this] { return display_.unit(); },
           [this](KeyCommand command) {
               run(command);
           }},
          &parts.window)),
      runs_(new RunTables(
          {.window = parts.window,
           .engagements = parts.engagements,
           .current = current_,
           .unit = [this] { return display_.unit(); },
           .open = parts.openFiles,
           .follow = [this](const LoadedEngagement& engagement) { engagementKeys_.follow(engagement); },
           .toggleGhosts = [this] { ghosts_->toggle(); },
           .runKey =
               [this](KeyCommand command) {
                   run(command);
               }},
          &parts.window)),
      sides_(
          {parts.window, *parts.form.glWidget, current_, *parts.form.doubleSpinBox, parts.notice,
           [this](KeyCommand command) {
               run(command);
           }}),
      readout_(new ViewReadout(*parts.form.glWidget, [this] { return readoutSubject(); })),
      names_(new BodyNames(*parts.form.glWidget, parts.engagements)),
      display_({*parts.form.glWidget, *readout_, *names_, parts.notice}), ghosts_(new GhostDisplay(
                                                                              {.view = *parts.form.glWidget,
                                                                               .engagements = parts.engagements,
                                                                               .current = current_,
                                                                               .notice = parts.notice,
                                                                               .unit =
                                                                                   [this] {
                                                                                       return display_.unit();
                                                                                   }},
                                                                              &parts.window)),
      help_(new KeyHelp(parts.window)), loads_(new LoadNotice(*parts.form.glWidget)), report_(*loads_),
      reach_(new ClockReach(
          {*parts.form.doubleSpinBox, *parts.form.horizontalSlider}, parts.engagements, *loads_, &parts.window)),
      playback_({*parts.form.doubleSpinBox, *parts.form.horizontalSlider, parts.clock, *reach_, parts.notice}) {
    new FocusFrame(*parts.form.glWidget);
    styleEngagementMenu(*parts.form.menuETXYZ_Files);
    QObject::connect(
        parts.form.glWidget, &AircraftWidget::cameraMoved, readout_, [this] { tellWhenNothingIsInSight(); });
    names_->lower();
    (new EmptyHint(*parts.form.glWidget, parts.engagements))->lower();
    const auto passMoment = [this] {
        parts_.notice.momentHasPassed();
    };
    QObject::connect(parts.form.doubleSpinBox, &QDoubleSpinBox::valueChanged, &parts.notice, passMoment);
    QObject::connect(parts.form.horizontalSlider, &QSlider::valueChanged, &parts.notice, passMoment);
    makeAccessible(parts.form);
    new KeyFilter(parts.window, [this](KeyCommand command) {
        run(command);
        readout_->refresh();
    });
    QObject::connect(parts.form.doubleSpinBox, &QDoubleSpinBox::valueChanged, readout_, [this] { showTime(); });
    QObject::connect(&parts.engagements, &EngagementList::settled, readout_, [this] { showCurrent(); });
    QObject::connect(&parts.engagements, &EngagementList::removed, readout_, [this] { showCurrent(); });
}

void WindowFeatures::viewChosen(EngagementId id) {
    current_.remember(id);
    showCurrent();
}

void WindowFeatures::showRuns(const QString& database) {
    runs_->show(database);
}

void WindowFeatures::speedChosen(double speed) {
    speed_ = speed;
    playback_.tellSpeed(speed);
    readout_->refresh();
}

void WindowFeatures::afterTick(double speed) {
    playback_.afterTick(speed);
    readout_->tick(playback_.secondsOfTick(askedRate()));
}

void WindowFeatures::showTime() {
    readout_->refresh();
    names_->refresh();
}

void WindowFeatures::showCurrent() {
    readout_->refresh();
    marks_->refresh();
    plots_->refresh();
    runs_->refresh();
    sides_.refresh();
    ghosts_->refresh();
    markFollowed(parts_.engagements);
}

ReadoutSubject WindowFeatures::readoutSubject() const {
    return {
        .time = parts_.form.doubleSpinBox->value(),
        .engagement = current_.get(),
        .viewMode = parts_.form.glWidget->viewMode(),
        .unit = display_.unit(),
        .rate = askedRate(),
        .isPlaying = parts_.clock.isRunning(),
        .pointed = display_.pointedLines()};
}

double WindowFeatures::askedRate() const {
    return parts_.clock.transport().shuttleRate().value_or(speed_);
}

void WindowFeatures::run(KeyCommand command) {
    switch (command) {
    case KeyCommand::PlayOrPause:
        return parts_.clock.playOrStop();
    case KeyCommand::ShuttleBackward:
        return shuttle(&Transport::shuttleBackward);
    case KeyCommand::ShuttleStop:
        return parts_.clock.stop();
    case KeyCommand::ShuttleForward:
        return shuttle(&Transport::shuttleForward);
    case KeyCommand::SlowBackward:
        return shuttle(&Transport::shuttleSlowlyBackward);
    case KeyCommand::SlowForward:
        return shuttle(&Transport::shuttleSlowlyForward);
    case KeyCommand::PreviousSample:
        return stepToSample(false);
    case KeyCommand::NextSample:
        return stepToSample(true);
    case KeyCommand::TenthBack:
        return steps_->bySeconds(-0.1);
    case KeyCommand::TenthForward:
        return steps_->bySeconds(0.1);
    case KeyCommand::SecondBack:
        return steps_->bySeconds(-1.0);
    case KeyCommand::SecondForward:
        return steps_->bySeconds(1.0);
    case KeyCommand::ToStart:
        return steps_->toStart();
    case KeyCommand::ToEnd:
        return steps_->toEnd();
    case KeyCommand::PreviousEvent:
        return stepToEvent(false);
    case KeyCommand::NextEvent:
        return stepToEvent(true);
    case KeyCommand::ToClosestApproach:
        return goToClosestApproach();
    case KeyCommand::ExtendClock:
        return reach_->extend(parts_.notice);
    case KeyCommand::SetInPoint:
        return setLoopPoint(true);
    case KeyCommand::SetOutPoint:
        return setLoopPoint(false);
    case KeyCommand::ToggleLoop:
        return toggleLoop();
    case KeyCommand::ViewThreat:
        return chooseView(ViewThreat);
    case KeyCommand::ViewGyro:
        return chooseView(ViewGyro);
    case KeyCommand::ViewTarget:
        return chooseView(ViewTarget);
    case KeyCommand::ViewFree:
        return chooseView(ViewFree);
    case KeyCommand::Overview:
        chooseView(ViewFree);
        return parts_.form.glWidget->showAll();
    case KeyCommand::ToggleReticles:
        return display_.toggleReticles();
    case KeyCommand::TurnLeft:
    case KeyCommand::TurnRight:
    case KeyCommand::TurnUp:
    case KeyCommand::TurnDown:
    case KeyCommand::SlideLeft:
    case KeyCommand::SlideRight:
    case KeyCommand::SlideUp:
    case KeyCommand::SlideDown:
    case KeyCommand::ZoomIn:
    case KeyCommand::ZoomOut:
        moveByKey(*parts_.form.glWidget, command);
        return;
    case KeyCommand::FollowPrevious:
        return engagementKeys_.follow(StepDirection::Back);
    case KeyCommand::FollowNext:
        return engagementKeys_.follow(StepDirection::Forward);
    case KeyCommand::ToggleOthers:
        return engagementKeys_.toggleOthers();
    case KeyCommand::ToggleGhosts:
        return ghosts_->toggle();
    case KeyCommand::CycleGhostColours:
        return ghosts_->cycleMeasure();
    case KeyCommand::CycleGhostAlignment:
        return ghosts_->cycleAlignment();
    case KeyCommand::TakeOut:
        return engagementKeys_.remove();
    case KeyCommand::ToggleReadout:
        return readout_->toggle();
    case KeyCommand::CycleReadoutCorner:
        return display_.cycleCorner();
    case KeyCommand::CycleUnit:
        display_.cycleUnit();
        runs_->showUnit();
        ghosts_->refresh();
        return plots_->showUnit();
    case KeyCommand::ToggleNames:
        return display_.toggleNames();
    case KeyCommand::TogglePlots:
        return plots_->toggle();
    case KeyCommand::ToggleRuns:
        return runs_->toggle();
    case KeyCommand::OpenView:
        return sides_.open();
    case KeyCommand::ToggleLineStyles:
        return parts_.form.glWidget->setLineStyles(!parts_.form.glWidget->lineStyles());
    case KeyCommand::CycleScale:
    case KeyCommand::CyclePalette:
    case KeyCommand::ScaleUp:
    case KeyCommand::ScaleDown:
        return display_.changeScale(command);
    case KeyCommand::CycleAntialiasing:
        return display_.cycleAntialiasing();
    case KeyCommand::ToggleFullScreen:
        return parts_.window.setWindowState(parts_.window.windowState() ^ Qt::WindowFullScreen);
    case KeyCommand::Screenshot:
        return parts_.form.actionScreenshot->trigger();
    case KeyCommand::ToggleRecording:
        return parts_.toggleRecording();
    case KeyCommand::Reload:
        return reload();
    case KeyCommand::ShowKeys:
        return help_->toggle();
    case KeyCommand::Exit:
        return parts_.form.actionExit->trigger();
    }
}

void WindowFeatures::stepToSample(bool isForward) {
    if (const LoadedEngagement* const engagement = current_.get())
        steps_->toSample(engagement->data().keyframes, direction(isForward));
}

void WindowFeatures::stepToEvent(bool isForward) {
    const LoadedEngagement* const engagement = current_.get();
    if (engagement == nullptr)
        return;
    if (const EngagementEvent* const event = steps_->toEvent(engagement->facts().events, direction(isForward)))
        parts_.notice.notifyOfMoment(QStringLiteral("%1: %2").arg(event->name, timeText(event->time)));
    else
        tellNoEvent(isForward);
}

void WindowFeatures::tellNoEvent(bool isForward) {
    parts_.notice.notifyOfMoment(QStringLiteral("No event %1 %2")
                                     .arg(
                                         isForward ? QStringLiteral("after") : QStringLiteral("before"),
                                         timeText(parts_.form.doubleSpinBox->value())));
}

void WindowFeatures::shuttle(void (Transport::*send)()) {
    parts_.clock.shuttle(send);
    playback_.tellShuttle();
}

void WindowFeatures::goToClosestApproach() {
    const LoadedEngagement* const engagement = current_.get();
    if (engagement == nullptr || !engagement->facts().closest)
        return;
    const ClosestApproach& closest = *engagement->facts().closest;
    if (steps_->canShow(closest.time)) {
        steps_->to(closest.time);
        parts_.notice.notifyOfMoment(
            QStringLiteral("Closest approach: %1").arg(lengthText(closest.range, display_.unit())));
    } else {
        parts_.notice.notify(
            QStringLiteral("Closest approach: %1, which the time box can't show").arg(timeText(closest.time)));
    }
}

void WindowFeatures::setLoopPoint(bool isInPoint) {
    Transport& transport = parts_.clock.transport();
    const double time = parts_.form.doubleSpinBox->value();
    if (isInPoint)
        transport.setInPoint(time);
    else
        transport.setOutPoint(time);
    tellLoop();
}

void WindowFeatures::toggleLoop() {
    parts_.clock.transport().toggleLoop();
    tellLoop();
}

void WindowFeatures::tellLoop() {
    marks_->refresh();
    plots_->showLoop();
    const Transport& transport = parts_.clock.transport();
    parts_.notice.notify(QStringLiteral("Loop %1, %2 to %3")
                             .arg(
                                 transport.isLooping() ? QStringLiteral("on") : QStringLiteral("off"),
                                 timeText(transport.inPoint()), timeText(transport.outPoint(parts_.clock.range()))));
}

void WindowFeatures::chooseView(ViewMode mode) {
    const LoadedEngagement* const engagement = current_.get();
    if (engagement == nullptr)
        return;
    QAction* const view = viewAction(engagement->data(), mode);
    if (view->isChecked())
        parts_.form.glWidget->reset(); // choosing it again would uncheck it
    else
        view->trigger();
}

void WindowFeatures::tellWhenNothingIsInSight() {
    if (parts_.form.glWidget->isAllBeyondSight())
        parts_.notice.notify(
            QStringLiteral(
                "Everything is farther than %1 units away, where nothing is drawn: a double click starts over")
                .arg(kFarDepth));
}

void WindowFeatures::reload() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const ReloadResult result = reloadAll(parts_.engagements, *parts_.form.glWidget);
    QGuiApplication::restoreOverrideCursor();
    QStringList faults;
    if (!result.unreadable.isEmpty())
        faults << QStringLiteral("no engagement in %1").arg(fileNames(result.unreadable));
    faults << result.kept;
    if (!faults.isEmpty())
        parts_.notice.notify(QStringLiteral("Not reloaded: %1").arg(faults.join(QStringLiteral("; "))));
    else if (!parts_.engagements.isEmpty())
        parts_.notice.notify(QStringLiteral("Reloaded"));
}

void WindowFeatures::tellChanged(const QStringList& paths) {
    parts_.notice.notify(QStringLiteral("%1 changed on disk, F5 reloads").arg(fileNames(paths)));
}
} // namespace sorvane
