// The flight path of one body up to the current time, with its drop lines.
#include "historyline.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "glapi.h"

namespace sorvane {
namespace {
constexpr double kDropLineInterval = 0.5; // seconds
} // namespace

HistoryPath
historyPath(const QMap<double, keyframe>& keyframes, PathOf body, bool withDropLines, const Vertex& origin) {
    HistoryPath path;
    const auto count = static_cast<std::size_t>(keyframes.size());
    path.vertices.reserve(count + count / 8); // for drop lines and coarse lines, too
    std::size_t number = 0;
    double previousPhase = 0.0;
    for (auto sample = keyframes.cbegin(); sample != keyframes.cend(); ++sample) {
        const auto& position = body == PathOf::Target ? sample->targetPos : sample->threatPos;
        const Vertex vertex = vertexFrom(origin, position);
        path.vertices.push_back(vertex);
        const double phase = std::fmod(sample.key(), kDropLineInterval);
        if (withDropLines && number > 0 && previousPhase > phase) {
            path.vertices.push_back(vertexFrom(origin, {position[0], position[1], 0.0F}));
            path.vertices.push_back(vertex);
            path.dropLines.push_back(number);
        }
        previousPhase = phase;
        ++number;
    }
    return path;
}

HistoryLine::HistoryLine(
    const QMap<double, keyframe>& keyframes, PathOf body, bool withDropLines, const Vertex& origin) {
    HistoryPath path = historyPath(keyframes, body, withDropLines, origin);
    dropLines_ = std::move(path.dropLines);
    chunks_.emplace(path.vertices, 0, path.vertices.size(), coarseTolerance(boxOf(path.vertices)));
    buffer_.assign(std::move(path.vertices));
}

void HistoryLine::draw(std::size_t sampleCount, const LineSight* lineSight) {
    const auto drops = std::lower_bound(dropLines_.begin(), dropLines_.end(), sampleCount) - dropLines_.begin();
    runs_.clear();
    chunks_->addRuns(sampleCount + 2 * static_cast<std::size_t>(drops), lineSight, runs_);
    buffer_.drawRuns(GL_LINE_STRIP, runs_.firsts, runs_.counts);
}
} // namespace sorvane
