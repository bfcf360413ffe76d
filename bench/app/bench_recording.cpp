// A tick of a recording (grab the view, convert, encode) against grabbing the view alone, at 824 × 480.
#include <benchmark/benchmark.h>

#include <clocale>
#include <memory>

#include <QApplication>
#include <QOpenGLWidget>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QTest>

#include "framegrab.h"
#include "makedemonstration.h"
#include "new_sorvane.h"
#include "qvideoencoder.h"
#include "surfaceformat.h"

using namespace sorvane;

namespace {
// The real window with a demonstration engagement, its view at 824 × 480, made once.
struct Window {
    int argc = 1;
    char name[6] = "bench";
    char* argv[2] = {name, nullptr};
    std::unique_ptr<QApplication> application;
    std::unique_ptr<new_sorvane> window;
    QOpenGLWidget* view = nullptr;
    QTemporaryDir folder;

    Window() {
        QSurfaceFormat::setDefaultFormat(viewSurfaceFormat());
        application = std::make_unique<QApplication>(argc, argv);
        std::setlocale(LC_NUMERIC, "C");
        window = std::make_unique<new_sorvane>();
        view = window->findChild<QOpenGLWidget*>("glWidget");
        window->show();
        if (!sorvane::makeDemonstration(folder.path().toStdString()))
            window->loadEtxyzFile(folder.filePath("ETXYZ.OUT.turn"));
        QTest::qWait(200);
        window->resize(window->width() + 824 - view->width(), window->height() + 480 - view->height());
        QTest::qWait(200);
    }
};

QOpenGLWidget& view() {
    static auto* const window = new Window; // its application outlives everything
    return *window->view;
}

void tick(benchmark::State& state) {
    QTemporaryDir folder;
    QVideoEncoder encoder;
    encoder.createFile(folder.filePath("a.avi"), 824, 480, 10000000, 20, 30);
    if (!encoder.isOk() || grabFrame(view()).size() != QSize(824, 480))
        state.SkipWithError("the view is not 824 × 480");
    for ([[maybe_unused]] auto _ : state)
        encoder.encodeImage(grabFrame(view()));
}
void grabAlone(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(grabFrame(view()));
}
BENCHMARK(tick)->Name("recording tick/ours")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(grabAlone)->Name("recording tick/grab alone")->UseRealTime()->Unit(benchmark::kMillisecond);
} // namespace
