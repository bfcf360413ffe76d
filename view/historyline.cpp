// The flight path of one body up to the current time, with its drop lines.
#include "historyline.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "glapi.h"

namespace {
constexpr double kDropLineInterval = 0.5; // seconds
} // namespace

HistoryPath historyPath(const QMap<double, keyframe>& keyframes, PathOf body, bool withDropLines) {
    HistoryPath path;
    const auto count = static_cast<std::size_t>(keyframes.size());
    path.vertices.reserve(count);
    path.vertexEnds.reserve(count);
    double previousPhase = 0.0;
    for (auto sample = keyframes.cbegin(); sample != keyframes.cend(); ++sample) {
        const auto& position = body == PathOf::Target ? sample->targetPos : sample->threatPos;
        const Vertex vertex = {position[0], position[1], position[2]};
        path.vertices.push_back(vertex);
        const double phase = std::fmod(sample.key(), kDropLineInterval);
        if (withDropLines && !path.vertexEnds.empty() && previousPhase > phase) {
            path.vertices.push_back({position[0], position[1], 0.0F});
            path.vertices.push_back(vertex);
        }
        previousPhase = phase;
        path.vertexEnds.push_back(path.vertices.size());
    }
    return path;
}

HistoryLine::HistoryLine(const QMap<double, keyframe>& keyframes, PathOf body, bool withDropLines) {
    HistoryPath path = historyPath(keyframes, body, withDropLines);
    vertexEnds_ = std::move(path.vertexEnds);
    buffer_.assign(std::move(path.vertices));
}

void HistoryLine::draw(std::size_t sampleCount) {
    const std::size_t samples = std::min(sampleCount, vertexEnds_.size());
    buffer_.draw(GL_LINE_STRIP, samples == 0 ? 0 : vertexEnds_[samples - 1]);
}
