// A tick of a recording (grab the view, convert, encode) against grabbing the view alone, at 824 × 480.
#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "aircraftwidget.h"
#include "benchwindow.h"
#include "framegrab.h"
#include "qvideoencoder.h"

using namespace sorvane;

namespace {
void tick(benchmark::State& state) {
    QTemporaryDir folder;
    QVideoEncoder encoder;
    encoder.createFile(folder.filePath("a.avi"), 824, 480, 10000000, 20, 30);
    if (!encoder.isOk() || grabFrame(benchView()).size() != QSize(824, 480))
        state.SkipWithError("the view is not 824 × 480");
    for ([[maybe_unused]] auto _ : state)
        encoder.encodeImage(grabFrame(benchView()));
}
void grabAlone(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(grabFrame(benchView()));
}
BENCHMARK(tick)->Name("recording tick/ours")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(grabAlone)->Name("recording tick/grab alone")->UseRealTime()->Unit(benchmark::kMillisecond);
} // namespace
