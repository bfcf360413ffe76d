// A frame of the demonstration on a scale of radiance, and what is under the pointer, against the frame as ever.
#include <benchmark/benchmark.h>

#include <cstdlib>

#include "camerasubject.h"
#include "demonstrationstage.h"
#include "projection.h"
#include "scaledframe.h"
#include "textapplication.h"

using namespace sorvane;

namespace {
constexpr int kFrames = 6;

// Its target in the middle.
struct Stage : DemonstrationStage {
    TextApplication texts;
    Scene scene;
    ScaledFrame scaled;

    Stage() {
        if (texts.problem())
            std::abort();
        draw(0, {.range = PictureScale::Range::Automatic});
    }

    struct Frame {
        SceneOptions options;
        Camera camera;
    };
    Frame frameAt(int number) {
        Frame frame{{.showTerrain = true, .time = 2.0 * number}, {}};
        frame.camera.setMode(ViewTarget);
        const CameraSubject subject = subjectAt(engagement, frame.options.time);
        frame.camera.reset(subject);
        frame.camera.follow(subject, subject);
        applyProjection(kDefaultFieldOfViewDegrees, kWidth, kHeight);
        return frame;
    }
    std::vector<SceneEngagement> shown() { return {{EngagementId{1}, &engagement}}; }
    static ScaledRequest request(const PictureScale& scale) {
        return {.scale = scale, .width = kWidth, .height = kHeight, .followed = EngagementId{1}};
    }

    void draw(int number, const PictureScale& scale) {
        const Frame frame = frameAt(number);
        scaled.paint(scene, shown(), frame.camera, frame.options, request(scale));
        benchmark::DoNotOptimize(context.picture());
    }
    void point(int number) {
        const Frame frame = frameAt(number);
        const auto pointed = scaled.at(kWidth / 2, kHeight / 2, shown(), frame.camera, frame.options, request({}));
        benchmark::DoNotOptimize(pointed);
        if (!pointed || !pointed->parts)
            std::abort();
    }
};

Stage& stage() {
    static Stage only;
    return only;
}

void drawFrames(benchmark::State& state, const PictureScale& scale) {
    Stage& set = stage();
    for ([[maybe_unused]] auto _ : state)
        for (int frame = 0; frame < kFrames; ++frame)
            set.draw(frame, scale);
}
void pointAtFrames(benchmark::State& state) {
    Stage& set = stage();
    for ([[maybe_unused]] auto _ : state)
        for (int frame = 0; frame < kFrames; ++frame)
            set.point(frame);
}
constexpr PictureScale kAutomatic{
    .range = PictureScale::Range::Automatic, .palette = Palette::Inferno, .hasColourBar = true};
constexpr PictureScale kChosen{.range = PictureScale::Range::Chosen, .white = 1e-4, .hasColourBar = true};

BENCHMARK_CAPTURE(drawFrames, automatic, kAutomatic)
    ->Name("6 frames on an automatic scale/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFrames, off, PictureScale())
    ->Name("6 frames on an automatic scale/off")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFrames, chosen, kChosen)->Name("6 frames on a chosen scale/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFrames, again, PictureScale())
    ->Name("6 frames on a chosen scale/off")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFrames, bar, {.hasColourBar = true})
    ->Name("6 frames with a colour bar/ours")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFrames, plain, PictureScale())
    ->Name("6 frames with a colour bar/off")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(pointAtFrames)->Name("what is under the pointer in 6 frames/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(drawFrames, shown, PictureScale())
    ->Name("what is under the pointer in 6 frames/drawing them")
    ->Unit(benchmark::kMillisecond);
} // namespace
