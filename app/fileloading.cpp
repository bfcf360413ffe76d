// Loads files into a window that is on show.
#include "fileloading.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <optional>

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QKeyEvent>
#include <QShortcutEvent>
#include <QWindow>

#include "endsignals.h"
#include "loadedengagement.h"
#include "loadnotice.h"
#include "new_sorvane.h"
#include "runtables.h"

namespace sorvane {
namespace {
// Drops what the user does to the program, but for asking it to stop loading or to end.
class InputGate : public QObject {
public:
    InputGate() {
        QGuiApplication::setOverrideCursor(Qt::BusyCursor);
        QCoreApplication::instance()->installEventFilter(this);
    }
    ~InputGate() override { QGuiApplication::restoreOverrideCursor(); }

    bool isStopAsked() const { return isStopAsked_; }

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::KeyPress:
            isStopAsked_ = isStopAsked_ || static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
            return true;
        case QEvent::Shortcut:
            return static_cast<QShortcutEvent*>(event)->key() != QKeySequence(Qt::CTRL | Qt::Key_C);
        case QEvent::KeyRelease:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::ContextMenu:
        case QEvent::DragEnter:
        case QEvent::Drop:
            return true;
        default:
            return QObject::eventFilter(watched, event);
        }
    }

private:
    bool isStopAsked_ = false;
};

// Lets the window live in a small part of the time, however long its picture takes.
class Breath {
public:
    Breath(const QWidget& window, EngagementList::Series& loads) : window_(window), loads_(loads) {}

    void takeIfDue() {
        constexpr qint64 kLeastMilliseconds = 100;
        constexpr qint64 kWorkPerBreath = 10;
        if (since_.isValid() && since_.elapsed() < std::max(kLeastMilliseconds, kWorkPerBreath * taken_))
            return;
        QElapsedTimer taking;
        taking.start();
        loads_.settle();
        if (!since_.isValid())
            waitForDisplay();
        QApplication::processEvents();
        taken_ = taking.elapsed();
        since_.start();
    }

private:
    void waitForDisplay() const {
        constexpr qint64 kMostMilliseconds = 500;
        QElapsedTimer waiting;
        waiting.start();
        const QWindow* const shown = window_.windowHandle();
        while (shown != nullptr && !shown->isExposed() && waiting.elapsed() < kMostMilliseconds)
            QApplication::processEvents(QEventLoop::AllEvents, 10);
    }

    const QWidget& window_;
    EngagementList::Series& loads_; // is made good before each breath
    QElapsedTimer since_;
    qint64 taken_ = 0; // milliseconds, the last time
};
} // namespace

void loadFiles(new_sorvane& window, const QStringList& files) {
    QStringList paths;
    for (const QString& file : files) {
        if (RunTables::isDatabase(file))
            window.openFile(file);
        else
            paths << file;
    }
    if (paths.isEmpty())
        return;
    const InputGate gate;
    EngagementList::Series loads = window.loadSeries();
    Breath breath(window, loads);
    LoadNotice& notice = window.loadNotice();
    const auto isStopped = [&, wasVisible = window.isVisible()] {
        return gate.isStopAsked() || EndSignals::hasCome() || (wasVisible && !window.isVisible());
    };
    const auto goesOn = [&] {
        breath.takeIfDue();
        return !isStopped();
    };
    std::atomic<bool> isWanted = true;
    EngagementReadAhead readings(paths, [&isWanted] { return isWanted.load(); });
    // Nothing when the loading has stopped.
    const auto nextReading = [&] {
        constexpr std::chrono::milliseconds kLookUp(20);
        std::optional<EngagementReading> reading;
        while (!reading && goesOn())
            reading = readings.takeWithin(kLookUp);
        return reading;
    };
    qsizetype loaded = 0;
    for (const QString& path : paths) {
        notice.setProgress(QStringLiteral("%1 of %2: %3, Esc stops")
                               .arg(loaded + 1)
                               .arg(paths.size())
                               .arg(QFileInfo(path).fileName()));
        std::optional<EngagementReading> reading = nextReading();
        if (!reading)
            break;
        completeReading(*reading);
        window.takeReading(path, *std::move(reading));
        ++loaded;
    }
    isWanted = false;
    loads.settle();
    notice.setProgress({});
    if (gate.isStopAsked())
        notice.setLast(QStringLiteral("Stopped: %1 of %2 files are loaded").arg(loaded).arg(paths.size()));
}
} // namespace sorvane
