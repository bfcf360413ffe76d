// The viewer's load of a trajectory as a benchmark, shared by what is measured against it.
#include "loadbench.h"

#include <malloc.h>
#include <memory>

#include <QFileInfo>

#include "etxyz.h"
#include "longtrajectory.h"

using namespace sorvane;

void giveMemoryBack() {
    ::malloc_trim(0);
}

void benchmarkLoad(benchmark::State& state, const QString& path) {
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
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
}
