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
    feet_.reserve(dropLines_.size());
    for (const std::size_t sample : dropLines_)
        feet_.push_back(sample + 2 * feet_.size() + 1);
    chunks_.emplace(path.vertices, 0, path.vertices.size(), coarseTolerance(boxOf(path.vertices)), feet_);
    firstDrop_ = path.vertices.size();
    for (const std::size_t foot : feet_)
        for (const std::size_t end : {foot - 1, foot})
            path.vertices.push_back(Vertex(path.vertices[end]));
    buffer_.assign(std::move(path.vertices));
}

void HistoryLine::draw(std::size_t sampleCount, const LineSight* lineSight) {
    const auto drops = std::lower_bound(dropLines_.begin(), dropLines_.end(), sampleCount) - dropLines_.begin();
    runs_.clear();
    coarse_.clear();
    chunks_->addRuns(sampleCount + 2 * static_cast<std::size_t>(drops), lineSight, runs_, &coarse_);
    buffer_.drawRuns(GL_LINE_STRIP, runs_.firsts, runs_.counts);
    findDrops();
    buffer_.drawRuns(GL_LINES, drops_.firsts, drops_.counts);
}

void HistoryLine::findDrops() {
    drops_.clear();
    for (std::size_t run = 0; run < coarse_.firsts.size(); ++run) {
        const auto first = static_cast<std::size_t>(coarse_.firsts[run]);
        const std::size_t last = first + static_cast<std::size_t>(coarse_.counts[run]) - 1;
        // One with its foot at either end has a half in the run.
        const auto from = std::ranges::lower_bound(feet_, first) - feet_.begin();
        const auto to = std::ranges::upper_bound(feet_, last) - feet_.begin();
        if (from == to)
            continue;
        drops_.firsts.push_back(static_cast<int>(firstDrop_) + 2 * static_cast<int>(from));
        drops_.counts.push_back(2 * static_cast<int>(to - from));
    }
}
} // namespace sorvane
