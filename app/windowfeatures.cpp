// What the window offers beyond its form: keys, read-out, dropped files, reloading.
#include "windowfeatures.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>

#include "accessiblenames.h"
#include "aircraftwidget.h"
#include "etxyz.h"
#include "filedrop.h"
#include "keyfilter.h"
#include "keyhelp.h"
#include "measuretext.h"
#include "new_sorvane.h"
#include "playbackclock.h"
#include "readout.h"
#include "timesteps.h"
#include "ui_new_sorvane.h"
#include "viewnotice.h"

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
      watch_([this](const QStringList& paths) { tellChanged(paths); }, nullptr),
      reload_({parts.engagements, *parts.form.glWidget, *parts.form.horizontalSlider, facts_, watch_}),
      steps_(new TimeSteps(*parts.form.doubleSpinBox, *parts.form.horizontalSlider, &parts.window)),
      readout_(new ViewReadout(*parts.form.glWidget, [this] { return readoutSubject(); })),
      help_(new KeyHelp(parts.window)) {
    makeAccessible(parts.form);
    new KeyFilter(parts.window, [this](KeyCommand command) { run(command); });
    new FileDrop(parts.window, [this](const QString& path) { parts_.window.loadEtxyzFile(path); });
    QObject::connect(
        parts.form.doubleSpinBox, &QDoubleSpinBox::valueChanged, readout_, [this] { readout_->refresh(); });
}

void WindowFeatures::engagementAdded(const etxyz& engagement, const FileStamp& stamp) {
    if (parts_.engagements.size() == 1)
        current_.remember(engagement.menu); // the first one starts selected
    reload_.registerLoaded(engagement, stamp);
    readout_->refresh();
}

void WindowFeatures::viewChosen(const QMenu* menu) {
    current_.remember(menu);
    readout_->refresh();
}

ReadoutSubject WindowFeatures::readoutSubject() {
    const etxyz* const engagement = current_.get();
    return {
        .time = parts_.form.doubleSpinBox->value(),
        .engagement = engagement,
        .facts = engagement == nullptr ? nullptr : &facts_.of(*engagement),
        .viewMode = parts_.form.glWidget->viewMode()};
}

void WindowFeatures::run(KeyCommand command) {
    switch (command) {
    case KeyCommand::PlayOrPause:
        return parts_.window.on_playButton_clicked();
    case KeyCommand::ShuttleBackward:
        return parts_.clock.shuttleBackward();
    case KeyCommand::ShuttleStop:
        return parts_.clock.stop();
    case KeyCommand::ShuttleForward:
        return parts_.clock.shuttleForward();
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
    case KeyCommand::SetInPoint:
        return setLoopPoint(true);
    case KeyCommand::SetOutPoint:
        return setLoopPoint(false);
    case KeyCommand::ToggleLoop:
        return toggleLoop();
    case KeyCommand::ViewThreat:
        return chooseView(1);
    case KeyCommand::ViewGyro:
        return chooseView(2);
    case KeyCommand::ViewTarget:
        return chooseView(3);
    case KeyCommand::ViewFree:
        return chooseView(4);
    case KeyCommand::ToggleReadout:
        return readout_->toggle();
    case KeyCommand::ToggleLineStyles:
        return parts_.form.glWidget->setLineStyles(!parts_.form.glWidget->lineStyles());
    case KeyCommand::ToggleFullScreen:
        return parts_.window.setWindowState(parts_.window.windowState() ^ Qt::WindowFullScreen);
    case KeyCommand::Screenshot:
        return parts_.form.actionScreenshot->trigger();
    case KeyCommand::Reload:
        return reload();
    case KeyCommand::ShowKeys:
        return help_->toggle();
    case KeyCommand::Exit:
        return parts_.form.actionExit->trigger();
    }
}

void WindowFeatures::stepToSample(bool isForward) {
    if (const etxyz* const engagement = current_.get())
        steps_->toSample(engagement->keyframes, direction(isForward));
}

void WindowFeatures::stepToEvent(bool isForward) {
    const etxyz* const engagement = current_.get();
    if (engagement == nullptr)
        return;
    if (const EngagementEvent* const event = steps_->toEvent(facts_.of(*engagement).events, direction(isForward)))
        parts_.notice.notify(QStringLiteral("%1: %2").arg(event->name, timeText(event->time)));
}

void WindowFeatures::goToClosestApproach() {
    const etxyz* const engagement = current_.get();
    if (engagement == nullptr || !facts_.of(*engagement).closest)
        return;
    const double time = facts_.of(*engagement).closest->time;
    if (steps_->canShow(time))
        steps_->to(time);
    else
        parts_.notice.notify(QStringLiteral("Closest approach: %1, which the time box can't show").arg(timeText(time)));
}

void WindowFeatures::setLoopPoint(bool isInPoint) {
    ClockCourse& course = parts_.clock.course();
    const double time = parts_.form.doubleSpinBox->value();
    if (isInPoint)
        course.setInPoint(time);
    else
        course.setOutPoint(time);
    tellLoop();
}

void WindowFeatures::toggleLoop() {
    parts_.clock.course().toggleLoop();
    tellLoop();
}

void WindowFeatures::tellLoop() {
    const ClockCourse& course = parts_.clock.course();
    parts_.notice.notify(QStringLiteral("Loop %1, %2 to %3")
                             .arg(
                                 course.isLooping() ? QStringLiteral("on") : QStringLiteral("off"),
                                 timeText(course.inPoint()), timeText(course.outPoint(parts_.window.clockRange()))));
}

void WindowFeatures::chooseView(int entry) {
    const etxyz* const engagement = current_.get();
    if (engagement == nullptr)
        return;
    QAction* const view = engagement->menu->actions().at(entry);
    if (view->isChecked())
        parts_.form.glWidget->reset(); // choosing it again would uncheck it
    else
        view->trigger();
}

void WindowFeatures::reload() {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const QStringList unreadable = reload_.reloadAll();
    QGuiApplication::restoreOverrideCursor();
    readout_->refresh();
    if (!unreadable.isEmpty())
        parts_.notice.notify(QStringLiteral("Not reloaded: no engagement in %1").arg(fileNames(unreadable)));
    else if (!parts_.engagements.isEmpty())
        parts_.notice.notify(QStringLiteral("Reloaded"));
}

void WindowFeatures::tellChanged(const QStringList& paths) {
    parts_.notice.notify(QStringLiteral("%1 changed on disk, F5 reloads").arg(fileNames(paths)));
}
