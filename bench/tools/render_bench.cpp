// Rendering the demonstration to a movie and to numbered pictures, beside drawing and encoding one after the other.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <vector>

#include <QTemporaryDir>

#include "makedemonstration.h"
#include "movieoutput.h"
#include "moviesettings.h"
#include "offscreenview.h"
#include "pictureoutput.h"
#include "videolog.h"

using namespace sorvane;

namespace {
constexpr int kFrames = 300;
constexpr double kStep = 0.033;
const QSize kSize(640, 480);

// The demonstration's first engagement, ready to be drawn, and its frames.
struct Stage {
    QTemporaryDir folder;
    QuietVideoLog quiet;
    std::unique_ptr<OffscreenView> view;
    std::vector<QImage> frames;

    Stage() {
        const std::string demo = folder.filePath("demo").toStdString();
        if (sorvane::makeDemonstration(demo))
            std::abort();
        ::setenv("PELSAR_DATA", (demo + "/data/").c_str(), 1);
        view = std::make_unique<OffscreenView>(kSize);
        auto engagement = std::make_unique<etxyz>();
        engagement->LoadETXYZ(QString::fromStdString(demo + "/ETXYZ.OUT.turn"));
        if (view->problem() || !view->add(std::move(engagement), false).back().outcome.hasReturned())
            std::abort();
        for (int i = 0; i < kFrames; ++i)
            frames.push_back(draw(i));
    }

    QImage draw(int i) {
        SceneOptions options;
        options.time = i * kStep;
        CameraChoice camera;
        camera.mode = ViewTarget;
        return view->draw(options, camera, 0);
    }
    std::string path(const char* name) const { return folder.filePath(name).toStdString(); }
};

Stage& stage() {
    static Stage instance;
    return instance;
}

void drawInto(FrameOutput& output, benchmark::State& state) {
    for (int i = 0; i < kFrames; ++i)
        output.add(i, stage().draw(i));
    if (!output.finish())
        state.SkipWithError("not every frame was written");
}

void renderMovie(benchmark::State& state) {
    stage();
    for (auto iteration : state) {
        MovieOutput output(stage().path("ours.avi"), kSize);
        drawInto(output, state);
    }
}
BENCHMARK(renderMovie)->Name("RenderMovieOf300Frames/ours")->Unit(benchmark::kMillisecond)->UseRealTime();

void drawAll(benchmark::State& state) {
    stage();
    for (auto iteration : state)
        for (int i = 0; i < kFrames; ++i)
            benchmark::DoNotOptimize(stage().draw(i));
}
BENCHMARK(drawAll)->Name("RenderMovieOf300Frames/drawing")->Unit(benchmark::kMillisecond)->UseRealTime();

void encodeAll() {
    QVideoEncoder encoder;
    encoder.createFile(
        QString::fromStdString(stage().path("theirs.avi")), static_cast<unsigned>(kSize.width()),
        static_cast<unsigned>(kSize.height()), kMovieBitsPerSecond, kMovieFramesPerKeyFrame, kMovieFramesPerSecond);
    for (const QImage& frame : stage().frames)
        encoder.encodeImage(frame);
    encoder.close();
}

void encodeMovie(benchmark::State& state) {
    stage();
    for (auto iteration : state)
        encodeAll();
}
BENCHMARK(encodeMovie)->Name("RenderMovieOf300Frames/encoding")->Unit(benchmark::kMillisecond)->UseRealTime();

void drawThenEncode(benchmark::State& state) {
    stage();
    for (auto iteration : state) {
        for (int i = 0; i < kFrames; ++i)
            benchmark::DoNotOptimize(stage().draw(i));
        encodeAll();
    }
}
BENCHMARK(drawThenEncode)
    ->Name("RenderMovieOf300Frames/one_after_the_other")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

void renderPictures(benchmark::State& state) {
    stage();
    for (auto iteration : state) {
        PictureOutput output(NumberedName(stage().path("%04d.png")), kFrames);
        drawInto(output, state);
    }
}
BENCHMARK(renderPictures)->Name("Render300Pictures/ours")->Unit(benchmark::kMillisecond)->UseRealTime();

void drawThenSave(benchmark::State& state) {
    stage();
    for (auto iteration : state) {
        for (int i = 0; i < kFrames; ++i)
            benchmark::DoNotOptimize(stage().draw(i));
        for (int i = 0; i < kFrames; ++i)
            stage().frames[static_cast<std::size_t>(i)].save(stage().folder.filePath(QString::number(i) + ".png"));
    }
}
BENCHMARK(drawThenSave)->Name("Render300Pictures/one_after_the_other")->Unit(benchmark::kMillisecond)->UseRealTime();
} // namespace
