// `sorvane stats` and `sorvane report` on a hundred thousand rows, beside reading the numbers that they need alone.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <random>
#include <sstream>

#include <QTemporaryDir>

#include "commandline.h"
#include "rundatabase.h"
#include "runlayout.h"
#include "runreader.h"

using namespace sorvane;

namespace {
constexpr int kRows = 100000;

// A database as `sorvane runs` makes it.
class Night {
public:
    Night() {
        const auto layout = RunLayout::make(LengthUnit::Metres, "flare(?<pattern>\\w+)");
        auto database = RunDatabase::open(path(), layout->columns());
        std::mt19937 random(3);
        std::weibull_distribution<double> miss(2.0, 10.0);
        std::vector<RunRow> rows;
        for (int i = 0; i < kRows; ++i) {
            RunRow row{"/data/night/ETXYZ.OUT.case" + std::to_string(i) + "_flare" + std::to_string(i % 4), {1, 1}, {}};
            for (const std::string& column : layout->columns())
                row.values.push_back(valueOf(column, miss(random), i));
            rows.push_back(std::move(row));
        }
        database->put(rows);
    }

    std::string path() const { return folder_.path().toStdString() + "/night.sqlite"; }
    std::string page() const { return folder_.path().toStdString() + "/night.html"; }

private:
    static RunValue valueOf(const std::string& column, double number, int row) {
        if (column == "faults" || column == "flares")
            return std::int64_t{0};
        if (column == "decoyed")
            return std::int64_t{row % 3 == 0 ? 1 : 0};
        if (column == "pattern")
            return std::int64_t{row % 4};
        if (column.find('_') == std::string::npos || column.starts_with("t"))
            return std::string("/data/site/some/file.of_a_set");
        return number;
    }

    QTemporaryDir folder_;
};

const Night& night() {
    static const Night made;
    return made;
}

void command(benchmark::State& state, const std::vector<std::string>& arguments) {
    for (auto _ : state) {
        std::ostringstream out;
        std::ostringstream err;
        Streams streams{out, err, false};
        if (runCommandLine(arguments, streams) != ExitStatus::Success)
            state.SkipWithError(err.str().c_str());
    }
}

void stats(benchmark::State& state) {
    command(state, {"stats", night().path()});
}

void groups(benchmark::State& state) {
    command(state, {"stats", night().path(), "--by", "pattern"});
}

void report(benchmark::State& state) {
    command(state, {"report", night().path(), "-o", night().page(), "--count", "0"});
}

void reading(benchmark::State& state) {
    for (auto _ : state) {
        const auto reader = RunReader::open(night().path());
        std::vector<double> values;
        const auto problem =
            reader->read({"closest_approach_m", "faults", "decoyed"}, "", [&](std::span<const RunValue> row) {
                values.push_back(std::get<double>(row[0]));
            });
        std::ranges::sort(values);
        benchmark::DoNotOptimize(values.data());
        if (problem)
            state.SkipWithError(problem->text.c_str());
    }
}
} // namespace

BENCHMARK(stats)->Name("stats of 100,000 runs/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(reading)->Name("stats of 100,000 runs/reading and sorting alone")->Unit(benchmark::kMillisecond);
BENCHMARK(groups)->Name("stats of 100,000 runs by groups/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(report)->Name("report of 100,000 runs/ours")->Unit(benchmark::kMillisecond);
