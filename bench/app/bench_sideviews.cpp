// A step of the clock with further views open, beside one without: until all are on show, each of 824 × 480.
#include <benchmark/benchmark.h>

#include <set>

#include <QApplication>
#include <QPointer>
#include <QTest>

#include "aircraftwidget.h"
#include "benchwindow.h"
#include "sideview.h"

using namespace sorvane;

namespace {
QList<SideView*> sideViews() {
    return benchView().window()->findChildren<SideView*>();
}

void awaitAll(const QList<QOpenGLWidget*>& views) {
    std::set<const QOpenGLWidget*> awaited(views.begin(), views.end());
    QList<QMetaObject::Connection> connections;
    for (const QOpenGLWidget* const view : views)
        connections << QObject::connect(view, &QOpenGLWidget::frameSwapped, [&awaited, view] { awaited.erase(view); });
    while (!awaited.empty())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    for (const QMetaObject::Connection& connection : connections)
        QObject::disconnect(connection);
}

// With so many further views, all on a scale of their own or as they open.
void stepWith(benchmark::State& state, int count, bool isOrdinary) {
    AircraftWidget& main = benchView();
    for (int i = 0; i < count; ++i)
        QTest::keyClick(&main, Qt::Key_W);
    QTest::qWait(200);
    QList<QOpenGLWidget*> views = {&main};
    for (SideView* const view : sideViews()) {
        view->resize(main.size());
        if (isOrdinary)
            view->setScale({});
        views << view;
    }
    QTest::qWait(500);
    bool isForward = false;
    for ([[maybe_unused]] auto iteration : state) {
        isForward = !isForward;
        QTest::sendKeyEvent(
            QTest::Click, &main, isForward ? Qt::Key_Right : Qt::Key_Left, QString(), Qt::NoModifier, 0);
        awaitAll(views);
    }
    for (const QPointer<SideView> view : sideViews()) {
        view->close();
        QTest::qWaitFor([&] { return view == nullptr; });
    }
    QTest::qWait(200);
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
