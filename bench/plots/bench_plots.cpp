// Four strips of 300,000 samples each: their first draw, a tick of the clock and a step of zooming, against drawing all
// points as one polyline and against drawing everything anew.
#include <benchmark/benchmark.h>

#include <cmath>

#include <QApplication>

#include "measurecurves.h"
#include "plotoverlay.h"
#include "stripplot.h"

using namespace sorvane;

namespace {
constexpr std::size_t kSamples = 300000;
constexpr QSize kSize(1200, 800);

QApplication& application() {
    static int count = 1;
    static char name[] = "bench_plots";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto* const made = new QApplication(count, arguments); // outlives what its libraries end at the exit
    return *made;
}

// A weaving pass.
struct LongEngagement {
    SampleSeries series;

    LongEngagement() {
        for (std::size_t i = 0; i < kSamples; ++i) {
            const double time = static_cast<double>(i) * 1.0e-4;
            Sample sample;
            sample.time = time;
            sample.targetPosition = {200.0 * time, 100.0 * std::sin(time), -1000.0};
            sample.threatPosition = {400.0 * time - 5000.0, 50.0 * std::sin(7.0 * time), -1000.0 - 20.0 * time};
            sample.gyro = {0.0, 5.0 * std::sin(3.0 * time), 5.0 * std::cos(time)};
            series.add(sample, {});
        }
        series.putInOrder();
    }
};

PlotDocument longPlot() {
    static const LongEngagement engagement;
    static const MeasuredEngagement measured(engagement.series, 4.0F);
    std::vector<const Measure*> measures;
    for (const char* const name : {"range", "closing-speed", "off-boresight", "aspect"})
        measures.push_back(findMeasure(name));
    return plotOf(std::vector<PlottedEngagement>{{"long", &measured, {}}}, measures);
}

struct ShownPlot {
    QApplication& made = application(); // before any widget
    StripPlot plot;

    explicit ShownPlot(bool hasDocument = true) {
        plot.resize(kSize);
        plot.show();
        QCoreApplication::processEvents();
        if (hasDocument)
            plot.setDocument(longPlot());
        draw();
    }
    void draw() { plot.replot(QCustomPlot::rpImmediateRefresh); }
};

void drawAllPoints(StripPlot& plot) {
    QImage picture(kSize, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    for (std::size_t strip = 0; strip < plot.stripCount(); ++strip) {
        const QCPAxis& times = *plot.strip(strip).axis(QCPAxis::atBottom);
        const QCPAxis& values = *plot.strip(strip).axis(QCPAxis::atLeft);
        QPolygonF line;
        for (const PlotPoint& point : plot.document().strips[strip].curves[0].points)
            line.append({times.coordToPixel(point.time), values.coordToPixel(point.value)});
        painter.drawPolyline(line);
    }
    benchmark::DoNotOptimize(picture.constBits());
}

void firstDraw(benchmark::State& state) {
    ShownPlot shown(false);
    longPlot();
    for ([[maybe_unused]] auto _ : state) {
        shown.plot.setDocument(longPlot());
        shown.draw();
    }
}
BENCHMARK(firstDraw)->Name("first draw of plots/ours")->Unit(benchmark::kMillisecond);

void firstDrawOfAllPoints(benchmark::State& state) {
    ShownPlot shown;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(longPlot());
        drawAllPoints(shown.plot);
    }
}
BENCHMARK(firstDrawOfAllPoints)->Name("first draw of plots/all points")->Unit(benchmark::kMillisecond);

void zoom(benchmark::State& state) {
    ShownPlot shown;
    double seconds = 30.0;
    for ([[maybe_unused]] auto _ : state) {
        seconds = seconds < 1.0 ? 30.0 : seconds / 1.25;
        shown.plot.setTimes({15.0 - seconds / 2.0, 15.0 + seconds / 2.0});
        shown.draw();
    }
}
BENCHMARK(zoom)->Name("zoom of plots/ours")->Unit(benchmark::kMillisecond);

void zoomOfAllPoints(benchmark::State& state) {
    ShownPlot shown;
    for ([[maybe_unused]] auto _ : state)
        drawAllPoints(shown.plot);
}
BENCHMARK(zoomOfAllPoints)->Name("zoom of plots/all points")->Unit(benchmark::kMillisecond);

// With the painting of the widget that follows.
void tick(benchmark::State& state) {
    ShownPlot shown;
    PlotOverlay overlay(shown.plot);
    shown.draw();
    double time = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        time = std::fmod(time + 0.033, 30.0);
        overlay.setNow(time);
        shown.plot.repaint();
    }
}
BENCHMARK(tick)->Name("tick of plots/ours")->Unit(benchmark::kMillisecond);

void tickOfEverything(benchmark::State& state) {
    ShownPlot shown;
    PlotOverlay overlay(shown.plot);
    double time = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        time = std::fmod(time + 0.033, 30.0);
        overlay.setNow(time);
        shown.draw();
    }
}
BENCHMARK(tickOfEverything)->Name("tick of plots/everything anew")->Unit(benchmark::kMillisecond);
} // namespace
