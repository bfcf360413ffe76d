// The labels of a hundred engagements, found, placed and painted, against painting their texts anew where they fall.
#include <benchmark/benchmark.h>

#include <cmath>
#include <list>

#include <QPainter>

#include "overlaytext.h"
#include "textapplication.h"

using namespace sorvane;

namespace {
constexpr int kEngagements = 100;
constexpr QSize kView(824, 480);

// Bodies all over the view, which move on from frame to frame.
struct Crowd {
    TextApplication texts;
    std::list<etxyz> engagements;
    std::vector<SceneEngagement> shown;
    Camera camera;
    QImage picture{kView, QImage::Format_RGB32};
    LabelPainter labels{textPixelSize(kView)};
    double time = 0.0;

    Crowd() {
        picture.fill(Qt::black);
        for (int i = 0; i < kEngagements; ++i) {
            etxyz& engagement = engagements.emplace_back();
            for (int second = 0; second < 30; ++second) {
                keyframe sample;
                sample.time = second;
                sample.targetPos[1] = static_cast<float>(1000.0 * std::sin(i + 0.1 * second));
                sample.targetPos[2] = static_cast<float>(500.0 * std::cos(2.7 * i));
                sample.threatPos[1] = static_cast<float>(900.0 * std::sin(1.7 * i + 0.1 * second));
                sample.threatPos[2] = static_cast<float>(450.0 * std::cos(3.1 * i));
                engagement.keyframes.insert(second, sample);
            }
            shown.push_back({newEngagementId(), &engagement});
        }
        camera.setMode(ViewFree);
        camera.place({4000.0F, 0.0F, 0.0F, 1.0F}, {0.0F, 0.0F, 0.0F, 1.0F});
    }

    std::vector<BodyLabel> next() {
        time = std::fmod(time + 0.033, 29.0);
        return bodyLabels(
            shown, {.camera = camera, .time = time, .fieldOfViewDegrees = 30.0, .size = kView},
            [this](const SceneEngagement& of) { return QStringLiteral("run-%1").arg(&of - shown.data()); });
    }
};

void paintLabels(benchmark::State& state) {
    Crowd crowd;
    QPainter painter(&crowd.picture);
    for ([[maybe_unused]] auto _ : state)
        crowd.labels.paint(painter, kView, crowd.next());
}
void paintTexts(benchmark::State& state) {
    Crowd crowd;
    QPainter painter(&crowd.picture);
    for ([[maybe_unused]] auto _ : state)
        for (const BodyLabel& label : crowd.next()) {
            painter.setPen(QColor(label.colour));
            painter.drawText(label.body, label.text);
        }
}
BENCHMARK(paintLabels)->Name("labels of 100 engagements, a frame/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(paintTexts)->Name("labels of 100 engagements, a frame/texts anew")->Unit(benchmark::kMillisecond);
} // namespace
