// A frame of the demonstration with each way of keeping depths apart, against plain depths of the whole range.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>

#include "camerasubject.h"
#include "demonstrationstage.h"
#include "projection.h"

using namespace sorvane;

namespace {
constexpr int kFrames = 24;

// Seen in turn in every view from its begin to its end.
struct Stage : DemonstrationStage {
    std::array<Scene, 3> scenes; // in the order of kWays

    static constexpr std::array<const char*, 3> kWays = {"", "slices", "one-range"};

    Stage() {
        for (std::size_t way = 0; way < kWays.size(); ++way) {
            ::setenv("SORVANE_DEPTH", kWays[way], 1); // asked for in a scene's first frame
            draw(scenes[way], 0);
        }
    }

    void draw(Scene& scene, int frame) {
        const SceneOptions options{.showTerrain = true, .time = 14.0 * frame / kFrames};
        Camera camera;
        camera.setMode(static_cast<ViewMode>(frame % 4));
        const CameraSubject subject = subjectAt(engagement, options.time);
        if (camera.mode() == ViewFree)
            camera.place({-600.0F, -2000.0F, -2300.0F, 1.0F}, {3000.0F, -3700.0F, -500.0F, 1.0F});
        camera.reset(subject);
        camera.follow(subject, subject);
        applyProjection(
            camera.mode() == ViewGyro ? double{engagement.fieldOfView} : kDefaultFieldOfViewDegrees, kWidth, kHeight);
        scene.draw({{EngagementId{1}, &engagement}}, camera, options);
        benchmark::DoNotOptimize(context.picture());
    }
};

void drawFrames(benchmark::State& state, std::size_t way) {
    static Stage stage;
    for ([[maybe_unused]] auto _ : state)
        for (int frame = 0; frame < kFrames; ++frame)
            stage.draw(stage.scenes[way], frame);
}
BENCHMARK_CAPTURE(drawFrames, float, 0)->Name("24 frames by float depths/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFrames, slices, 1)->Name("24 frames by slices/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFrames, range, 2)->Name("24 frames by float depths/plain")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFrames, again, 2)->Name("24 frames by slices/plain")->Unit(benchmark::kMillisecond);
} // namespace
