// A frame's own cost with long flight paths, against short ones: GL is replaced by counters.
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>

#include "countedgl.h"
#include "scene.h"

using namespace sorvane;

namespace {
constexpr int kManySamples = 300000;
constexpr int kFewSamples = 300;
constexpr double kDuration = 30.0; // seconds, whatever the number of samples

void fill(etxyz& engagement, int samples) {
    engagement.atm = std::make_unique<AtmFile>();
    for (int i = 0; i < samples; ++i) {
        keyframe sample;
        sample.time = kDuration * i / samples;
        sample.targetPos[0] = static_cast<float>(250.0 * sample.time);
        sample.targetPos[1] = static_cast<float>(1000.0 * std::sin(0.1 * sample.time));
        sample.targetPos[2] = -1000.0F;
        sample.threatPos[0] = static_cast<float>(600.0 * sample.time);
        sample.threatPos[2] = -500.0F;
        engagement.keyframes.insert(engagement.keyframes.cend(), sample.time, sample);
    }
}

// Plays from start to end over and over, a tick of the clock per frame.
void drawFrames(benchmark::State& state, int samples) {
    installCountedGl();
    ::setenv("SORVANE_DEPTH", "one-range", 1); // a frame is drawn once, as with float depths
    etxyz engagement;
    fill(engagement, samples);
    Scene scene;
    const Camera camera;
    SceneOptions options;
    const std::vector<SceneEngagement> shown = {{EngagementId{1}, &engagement}};
    scene.draw(shown, camera, options); // builds the line sets
    for ([[maybe_unused]] auto _ : state) {
        options.time = std::fmod(options.time + 0.033, kDuration);
        scene.draw(shown, camera, options);
    }
    state.counters["GL calls"] = benchmark::Counter(static_cast<double>(glCalls), benchmark::Counter::kAvgIterations);
    glCalls = 0;
}

void manySamples(benchmark::State& state) {
    drawFrames(state, kManySamples);
}
void fewSamples(benchmark::State& state) {
    drawFrames(state, kFewSamples);
}
BENCHMARK(manySamples)->Name("history lines of 300,000 samples, a frame/ours");
BENCHMARK(fewSamples)->Name("history lines of 300,000 samples, a frame/300 samples");
} // namespace
