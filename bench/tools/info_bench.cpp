// `sorvane info` on a long trajectory, against the viewer's load of it.
#include <benchmark/benchmark.h>

#include <malloc.h>
#include <memory>
#include <sstream>

#include "commandline.h"
#include "etxyz.h"
#include "longtrajectory.h"

namespace {
void info(benchmark::State& state) {
    const std::string path = longTrajectory().toStdString();
    for (auto _ : state) {
        std::ostringstream out;
        Streams streams{out, out};
        if (runCommandLine({"info", "--json", path}, streams) != ExitStatus::Success)
            state.SkipWithError("the trajectory could not be described");
        state.PauseTiming();
        ::malloc_trim(0);
        state.ResumeTiming();
    }
}

// The viewer keeps what it has loaded.
void viewerLoad(benchmark::State& state) {
    const QString path = longTrajectory();
    for (auto _ : state) {
        auto engagement = std::make_unique<etxyz>();
        engagement->LoadETXYZ(path);
        state.PauseTiming();
        if (engagement->keyframes.size() != kSampleCount)
            state.SkipWithError("not all samples were read");
        engagement.reset();
        ::malloc_trim(0);
        state.ResumeTiming();
    }
}
} // namespace

BENCHMARK(info)->Name("info 150 MB/ours")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(viewerLoad)->Name("info 150 MB/the viewer's load")->Unit(benchmark::kMillisecond)->UseRealTime();
