// A step of the clock with further views open, beside one without: until all are on show, each of 824 × 480.
#include <benchmark/benchmark.h>

#include <set>

#include <QApplication>
#include <QEvent>
#include <QTest>

#include "aircraftwidget.h"
#include "benchwindow.h"
#include "sideview.h"

using namespace sorvane;

namespace {
QList<SideView*> sideViews() {
    return benchView().window()->findChildren<SideView*>();
}

// Takes note of who has painted.
struct Painted : QObject {
    std::set<const QObject*> awaited;
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool isHandled = QObject::eventFilter(watched, event);
        if (event->type() == QEvent::Paint)
            awaited.erase(watched);
        return isHandled;
    }
};

// Until the main view's next picture is on show, and all others have been asked to paint and have had their turn.
void awaitAll(const QList<SideView*>& sides) {
    Painted painted;
    painted.awaited.insert(sides.begin(), sides.end());
    for (SideView* const side : sides)
        side->installEventFilter(&painted);
    bool isShown = false;
    const auto connection =
        QObject::connect(&benchView(), &QOpenGLWidget::frameSwapped, [&isShown] { isShown = true; });
    while (!isShown || !painted.awaited.empty())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(connection);
}

// With so many further views, all on a scale of their own or as they open.
void stepWith(benchmark::State& state, int count, bool isOrdinary) {
    AircraftWidget& main = benchView();
    for (int i = 0; i < count; ++i)
        QTest::keyClick(&main, Qt::Key_W);
    QTest::qWait(200);
    const QList<SideView*> sides = sideViews();
    for (SideView* const side : sides) {
        side->resize(main.size());
        if (isOrdinary)
            side->setScale({});
    }
    QTest::qWait(500);
    bool isForward = false;
    for ([[maybe_unused]] auto iteration : state) {
        isForward = !isForward;
        QTest::sendKeyEvent(
            QTest::Click, &main, isForward ? Qt::Key_Right : Qt::Key_Left, QString(), Qt::NoModifier, 0);
        awaitAll(sides);
    }
    for (SideView* const side : sides)
        side->close();
    QTest::qWait(500);
}
void fourViews(benchmark::State& state) {
    stepWith(state, 3, true);
}
void asTheyOpen(benchmark::State& state) {
    stepWith(state, 3, false);
}
void oneView(benchmark::State& state) {
    stepWith(state, 0, true);
}
BENCHMARK(fourViews)
    ->Name("step in four views/ours")
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(asTheyOpen)
    ->Name("step in four views/with the seeker's scale")
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK(oneView)
    ->Name("step in four views/one view")
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);
} // namespace
