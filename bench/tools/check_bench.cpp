// `sorvane check` on a long trajectory: time against the viewer's load of it.
#include <benchmark/benchmark.h>

#include <malloc.h>
#include <memory>
#include <sstream>

#include "commandline.h"
#include "etxyz.h"
#include "longtrajectory.h"

namespace {
// So that every iteration asks the system for its memory, as a program does with its first file.
void giveMemoryBack() {
    ::malloc_trim(0);
}

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
    const QString path = longTrajectory();
    for (auto _ : state) {
        auto engagement = std::make_unique<etxyz>();
        engagement->LoadETXYZ(path);
        state.PauseTiming();
        if (engagement->keyframes.size() != kSampleCount)
            state.SkipWithError("not all samples were read");
        engagement.reset();
        giveMemoryBack();
        state.ResumeTiming();
    }
}
} // namespace

BENCHMARK(check)->Name("check 150 MB/ours")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(load)->Name("check 150 MB/viewer's load")->Unit(benchmark::kMillisecond)->UseRealTime();
