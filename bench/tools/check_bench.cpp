// `sorvane check` on a long trajectory: time against the viewer's load of it.
#include <benchmark/benchmark.h>

#include <sstream>

#include "commandline.h"
#include "loadbench.h"
#include "longtrajectory.h"

using namespace sorvane;

namespace {
void check(benchmark::State& state) {
    const std::string path = longTrajectory().toStdString();
    for (auto _ : state) {
        std::ostringstream out;
        std::ostringstream err;
        Streams streams{out, err, false};
        const ExitStatus status = runCommandLine({"check", path}, streams);
        state.PauseTiming();
        // It names files that are not there, and its times reach the end of playback.
        if (status != ExitStatus::ProblemsFound || out.str().find("malformed") != std::string::npos)
            state.SkipWithError("the trajectory was not read as it should be");
        giveMemoryBack();
        state.ResumeTiming();
    }
}

void load(benchmark::State& state) {
    benchmarkLoad(state, longTrajectory());
}
} // namespace

BENCHMARK(check)->Name("check 150 MB/ours")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(load)->Name("check 150 MB/viewer's load")->Unit(benchmark::kMillisecond)->UseRealTime();
