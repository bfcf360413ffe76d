// How long the viewer takes to load 1,000 engagements of the command line, against a bare scan of their text.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <vector>

#include <QTemporaryDir>

#include "benchwindow.h"
#include "fileloading.h"
#include "loadedengagement.h"
#include "makedemonstration.h"
#include "new_sorvane.h"
#include "trajectoryreader.h"

using namespace sorvane;

namespace {
constexpr int kFiles = 1000;

// Names of one file of 434 kB.
struct Set {
    Set() {
        if (makeDemonstration(folder.path().toStdString()))
            return;
        for (int i = 0; i < kFiles; ++i) {
            paths << folder.filePath(QStringLiteral("ETXYZ.OUT.%1").arg(i));
            std::filesystem::create_hard_link(
                folder.filePath("ETXYZ.OUT.turn").toStdString(), paths.back().toStdString());
        }
    }

    QTemporaryDir folder;
    QStringList paths;
};
const QStringList& paths() {
    static const Set made;
    return made.paths;
}

void load(benchmark::State& state) {
    benchView(); // makes the application, and the data that the bodies are made of
    paths();
    std::vector<std::unique_ptr<new_sorvane>> windows; // end outside of what is timed
    for ([[maybe_unused]] auto _ : state) {
        windows.push_back(std::make_unique<new_sorvane>());
        windows.back()->show();
        loadFiles(*windows.back(), paths());
    }
}
void parseAlone(benchmark::State& state) {
    paths();
    for ([[maybe_unused]] auto _ : state) {
        EngagementReadAhead readings(paths());
        std::vector<EngagementReading> kept;
        for (int i = 0; i < kFiles; ++i)
            kept.push_back(readings.take());
        benchmark::DoNotOptimize(kept);
    }
}
void bareScan(benchmark::State& state) {
    paths();
    for ([[maybe_unused]] auto _ : state) {
        ReadAhead<int> scans(kFiles, usableProcessors(), kFiles, [](std::size_t number) {
            const TrajectoryInput input = openTrajectory(paths()[static_cast<qsizetype>(number)]);
            readTrajectoryHeader(input.device.get(), false);
            int samples = 0;
            readEachRecord(input.device.get(), false, [&](const Sample&, const std::vector<Flare>&) { ++samples; });
            return samples;
        });
        for (int i = 0; i < kFiles; ++i)
            benchmark::DoNotOptimize(scans.take());
    }
}
BENCHMARK(load)->Name("load 1,000 engagements/ours")->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(parseAlone)->Name("load 1,000 engagements/without window")->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(bareScan)->Name("load 1,000 engagements/bare scan")->UseRealTime()->Unit(benchmark::kMillisecond);
} // namespace
