// The table of a set of 100,000 runs: sorting and choosing rows, a page of scrolling and a brush, against reading the
// whole table into memory.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include <QApplication>
#include <QScrollBar>
#include <QTemporaryDir>

#include "rundatabase.h"
#include "runlayout.h"
#include "runtablewindow.h"

using namespace sorvane;

namespace {
constexpr int kRuns = 100000;

QApplication& application() {
    static int count = 1;
    static char name[] = "bench_runtable";
    static char* arguments[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto* const made = new QApplication(count, arguments); // outlives what its libraries end at the exit
    return *made;
}

// A number from 0 to 1 that looks like chance.
double chance(int number, int kind) {
    const double sine = std::sin(number * 12.9898 + kind * 78.233) * 43758.5453;
    return sine - std::floor(sine);
}

RunRow runOf(int number, std::size_t columns) {
    RunRow row{"night/case" + std::to_string(number) + "/ETXYZ.OUT." + std::to_string(number), {450000, number}, {}};
    for (std::size_t i = 0; i < columns; ++i)
        row.values.emplace_back(
            i < 17 && i > 5 ? RunValue("/data/tgt4004/tgt4004_b0001_mat0004.brdf")
                            : RunValue(1000.0 * chance(number, static_cast<int>(i))));
    return row;
}

class Set {
public:
    Set() {
        const std::vector<std::string> columns = RunLayout::make(LengthUnit::Metres, {})->columns();
        Outcome<RunDatabase> database = RunDatabase::open(path(), columns);
        std::vector<RunRow> rows;
        for (int i = 0; i < kRuns; ++i)
            rows.push_back(runOf(i, columns.size()));
        if (const auto problem = database->put(rows))
            std::abort();
    }
    std::string path() const { return folder_.filePath("night.sqlite").toStdString(); }

private:
    QTemporaryDir folder_;
};

const Set& set() {
    static const Set made;
    return made;
}

// What the thread beside the window does, while that lives.
void ask(benchmark::State& state, const RunQuestion& question) {
    const Outcome<RunQuery> query = RunQuery::open(set().path());
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(query->ask(question)->paths.size());
}
void sort(benchmark::State& state) {
    ask(state, {.order = "closest_approach_m"});
}
BENCHMARK(sort)->Name("sort 100,000 runs/ours")->Unit(benchmark::kMillisecond);
void choose(benchmark::State& state) {
    ask(state, {.where = "miss_distance < 50"});
}
BENCHMARK(choose)->Name("choose among 100,000 runs/ours")->Unit(benchmark::kMillisecond);

void readAll(benchmark::State& state) {
    const Outcome<RunDatabase> database = RunDatabase::openExisting(set().path());
    for ([[maybe_unused]] auto _ : state) {
        std::vector<RunRow> all;
        RunRows rows = database->rows();
        while (std::optional<RunRow> row = rows.next())
            all.push_back(std::move(*row));
        std::ranges::sort(all, {}, [](const RunRow& row) { return std::get<double>(row.values[17]); });
        benchmark::DoNotOptimize(all.data());
    }
}
BENCHMARK(readAll)->Name("sort 100,000 runs/read and sort in memory")->Unit(benchmark::kMillisecond);
BENCHMARK(readAll)->Name("choose among 100,000 runs/read and sort in memory")->Unit(benchmark::kMillisecond);

// The window itself.
struct ShownTable {
    QApplication& made = application(); // before any widget
    RunTableWindow window{
        nullptr,
        {.loaded = [] { return Outcome<std::string>(Problem("none")); },
         .isFollowed = [](const std::string&) { return false; },
         .follow = [](const std::string&, const QString&) { return std::optional<Problem>(); },
         .toggleGhosts =
             [] {
             }}};

    ShownTable() {
        window.resize(1180, 640);
        window.showDatabase(QString::fromStdString(set().path()));
        window.show();
        while (!window.isSettled())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::processEvents();
    }
};

// A page down that shows rows that nobody has read, drawn.
void scrollPage(benchmark::State& state) {
    ShownTable shown;
    QScrollBar& bar = *shown.window.table().verticalScrollBar();
    for ([[maybe_unused]] auto _ : state) {
        bar.setValue(bar.value() + bar.pageStep() < bar.maximum() ? bar.value() + bar.pageStep() : 0);
        shown.window.table().viewport()->repaint();
    }
}
BENCHMARK(scrollPage)->Name("a page of scrolling/ours")->Unit(benchmark::kMillisecond);

// All that the window does on its own thread between an answer and the picture of it.
void takeAnswer(benchmark::State& state) {
    ShownTable shown;
    const Outcome<RunQuery> query = RunQuery::open(set().path());
    const Outcome<RunAnswer> answer = query->ask({.columns = {"closest_approach_m", "closest_approach_aspect_deg"}});
    for ([[maybe_unused]] auto _ : state) {
        shown.window.model().setPaths(answer->paths);
        shown.window.histogram().setColumn({"miss", answer->columns[0].values, {}});
        shown.window.scatter().setColumns(
            {"aspect", answer->columns[1].values, {}}, {"miss", answer->columns[0].values, {}});
        shown.window.histogram().replot(QCustomPlot::rpImmediateRefresh);
        shown.window.scatter().replot(QCustomPlot::rpImmediateRefresh);
        shown.window.table().viewport()->repaint();
    }
}
BENCHMARK(takeAnswer)->Name("show an answer of 100,000 runs/ours")->Unit(benchmark::kMillisecond);

void brush(benchmark::State& state) {
    ShownTable shown;
    const RunBrush range =
        RunBrush::over(shown.window.histogram(), "closest_approach_m", QRectF(100.0, 0.0, 300.0, 1.0));
    for ([[maybe_unused]] auto _ : state) {
        const std::vector<std::uint8_t> marks = range.marks();
        shown.window.histogram().setMarks(marks);
        shown.window.scatter().setMarks(marks);
        shown.window.model().setMarks(marks);
        shown.window.histogram().replot(QCustomPlot::rpImmediateRefresh);
        shown.window.scatter().replot(QCustomPlot::rpImmediateRefresh);
        shown.window.table().viewport()->repaint();
    }
}
BENCHMARK(brush)->Name("brush 20,000 of 100,000 runs/ours")->Unit(benchmark::kMillisecond);
} // namespace
