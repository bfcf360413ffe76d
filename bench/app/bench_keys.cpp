// From a key to the picture that it asks for, at 824 × 480, against drawing a picture anew.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QTest>

#include "aircraftwidget.h"
#include "benchwindow.h"

namespace {
// Until the next picture is on show.
void awaitPicture() {
    bool isShown = false;
    const auto connection =
        QObject::connect(&benchView(), &QOpenGLWidget::frameSwapped, [&isShown] { isShown = true; });
    while (!isShown)
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QObject::disconnect(connection);
}

void keyToPicture(benchmark::State& state) {
    AircraftWidget& view = benchView();
    bool isForward = false;
    for ([[maybe_unused]] auto _ : state) {
        isForward = !isForward;
        QTest::sendKeyEvent(
            QTest::Click, &view, isForward ? Qt::Key_Right : Qt::Key_Left, QString(), Qt::NoModifier, 0);
        awaitPicture();
    }
}
void withTexts(benchmark::State& state) {
    for (const Qt::Key key : {Qt::Key_N, Qt::Key_H})
        QTest::keyClick(&benchView(), key);
    QTest::qWait(100);
    keyToPicture(state);
    for (const Qt::Key key : {Qt::Key_N, Qt::Key_H})
        QTest::keyClick(&benchView(), key);
    QTest::qWait(100);
}
void drawnAnew(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        benchView().update();
        awaitPicture();
    }
}
BENCHMARK(keyToPicture)->Name("key to picture/ours")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(withTexts)->Name("key to picture/with names and read-out")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(drawnAnew)->Name("key to picture/drawn anew")->UseRealTime()->Unit(benchmark::kMillisecond);
} // namespace
