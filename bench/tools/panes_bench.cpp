// A picture of four panes beside the same views one by one, each of the panes' size and with bodies of its own.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <vector>

#include <QTemporaryDir>

#include "makedemonstration.h"
#include "renderedscene.h"

using namespace sorvane;

namespace {
constexpr int kFrames = 48;
constexpr double kStep = 0.3; // over all of the engagement
const QSize kSize(1650, 962); // of a pane: 824 × 480

// The demonstration's first engagement in one view or in several.
class Sheet {
public:
    Sheet(const std::string& folder, const std::vector<ViewChoice>& views) {
        request_.files = {folder + "/ETXYZ.OUT.turn"};
        request_.size = kSize;
        if (views.size() > 1)
            request_.panes = views;
        else
            request_.size = PaneLayout(kSize, 4).paneSize();
        scene_ = std::make_unique<RenderedScene>(request_, [](const std::string&) {});
        if (scene_->load())
            std::abort();
        for (const ViewChoice& view : views)
            cameras_.push_back(view.isOverview ? scene_->overview() : CameraChoice{.mode = view.mode});
    }

    void drawAll() {
        SceneOptions options;
        for (int i = 0; i < kFrames; ++i) {
            options.time = i * kStep;
            benchmark::DoNotOptimize(scene_->draw(options, cameras_));
        }
    }

private:
    RenderRequest request_;
    std::unique_ptr<RenderedScene> scene_;
    std::vector<CameraChoice> cameras_;
};

const std::vector<ViewChoice>& views() {
    static const std::vector<ViewChoice> all = {
        {.mode = ViewThreat}, {.mode = ViewGyro}, {.mode = ViewTarget}, {.mode = ViewFree, .isOverview = true}};
    return all;
}

const std::string& demonstration() {
    static const QTemporaryDir folder;
    static const std::string demo = [] {
        const std::string path = folder.filePath("demo").toStdString();
        if (sorvane::makeDemonstration(path))
            std::abort();
        ::setenv("PELSAR_DATA", (path + "/data/").c_str(), 1);
        return path;
    }();
    return demo;
}

void fourPanes(benchmark::State& state) {
    Sheet sheet(demonstration(), views());
    for (auto iteration : state)
        sheet.drawAll();
}
BENCHMARK(fourPanes)->Name("FourPanes/ours")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

void oneView(benchmark::State& state, std::size_t view) {
    Sheet sheet(demonstration(), {views()[view]});
    for (auto iteration : state)
        sheet.drawAll();
}
void threat(benchmark::State& state) {
    oneView(state, 0);
}
void gyro(benchmark::State& state) {
    oneView(state, 1);
}
void target(benchmark::State& state) {
    oneView(state, 2);
}
void overview(benchmark::State& state) {
    oneView(state, 3);
}
BENCHMARK(threat)->Name("FourPanes/threat")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(gyro)->Name("FourPanes/gyro")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(target)->Name("FourPanes/target")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(overview)->Name("FourPanes/overview")->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
} // namespace
