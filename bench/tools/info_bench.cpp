// `sorvane info` on a long trajectory, against the viewer's load of it.
#include <benchmark/benchmark.h>

#include <sstream>

#include "commandline.h"
#include "loadbench.h"
#include "longtrajectory.h"

using namespace sorvane;

namespace {
void info(benchmark::State& state) {
    const std::string path = longTrajectory().toStdString();
    for (auto _ : state) {
        std::ostringstream out;
        Streams streams{out, out};
        if (runCommandLine({"info", "--json", path}, streams) != ExitStatus::Success)
            state.SkipWithError("the trajectory could not be described");
        state.PauseTiming();
        giveMemoryBack();
        state.ResumeTiming();
    }
}

void viewerLoad(benchmark::State& state) {
    benchmarkLoad(state, longTrajectory());
}
} // namespace

BENCHMARK(info)->Name("info 150 MB/ours")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(viewerLoad)->Name("info 150 MB/the viewer's load")->Unit(benchmark::kMillisecond)->UseRealTime();
