// The state of an engagement at any time: one look-up in playback order among many samples, against walking the keys
// and against few samples.
#include <benchmark/benchmark.h>

#include <memory>

#include "etxyz.h"
#include "longtrajectory.h"

using namespace sorvane;

namespace {
constexpr int kFewSamples = 300;
constexpr double kSeconds = 30.0;

// Samples with four flares each, evenly over kSeconds.
std::unique_ptr<etxyz> engagementOf(int sampleCount) {
    auto engagement = std::make_unique<etxyz>();
    for (int i = 0; i < sampleCount; ++i) {
        keyframe sample;
        sample.time = kSeconds * i / sampleCount;
        for (int flare = 0; flare < 4; ++flare) {
            sample.flares.append(flareKeyframe());
            sample.flares.last().id = flare;
            sample.flares.last().pos[0] = static_cast<float>(i);
        }
        engagement->keyframes.insert(engagement->keyframes.cend(), sample.time, sample);
    }
    return engagement;
}

// Times in playback order, a frame of 33 ms each, the whole engagement over and over.
class PlaybackTime {
public:
    double next() {
        time_ += 0.033;
        if (time_ >= kSeconds)
            time_ -= kSeconds;
        return time_;
    }

private:
    double time_ = 0.0;
};

void interpolate(benchmark::State& state, int sampleCount) {
    const auto engagement = engagementOf(sampleCount);
    PlaybackTime time;
    for (auto _ : state)
        benchmark::DoNotOptimize(engagement->InterpolatedFrame(time.next()));
}

void interpolateMany(benchmark::State& state) {
    interpolate(state, kSampleCount);
}

void interpolateFew(benchmark::State& state) {
    interpolate(state, kFewSamples);
}

// Finds the samples around the time from the first key on; the rest is InterpolatedFrame's own work.
void walkTheKeys(benchmark::State& state) {
    const auto engagement = engagementOf(kSampleCount);
    PlaybackTime time;
    for (auto _ : state) {
        const double t = time.next();
        auto upper = engagement->keyframes.cbegin();
        while (upper != engagement->keyframes.cend() && upper.key() <= t)
            ++upper;
        etxyz around;
        if (upper != engagement->keyframes.cend())
            around.keyframes.insert(upper.key(), *upper);
        if (upper != engagement->keyframes.cbegin())
            around.keyframes.insert(std::prev(upper).key(), *std::prev(upper));
        benchmark::DoNotOptimize(around.InterpolatedFrame(t));
    }
}
} // namespace

BENCHMARK(interpolateMany)->Name("interpolate 300000 samples/ours");
BENCHMARK(interpolateFew)->Name("interpolate 300000 samples/300 samples");
BENCHMARK(walkTheKeys)->Name("interpolate 300000 samples/walking the keys");
