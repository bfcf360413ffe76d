// The flight path of one body up to the current time, with its drop lines.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "etxyz.h"
#include "linechunks.h"
#include "vertexbuffer.h"

namespace sorvane {
enum class PathOf { Target, Threat };

// The vertices of one line strip through a body's position at every sample in time order. With drop lines the strip
// goes down to z = 0 and back up at each sample that lies in a later half second than the one before it. Coordinates
// count from `origin` (world).
struct HistoryPath {
    std::vector<Vertex> vertices;       // one per sample, and two more per drop line
    std::vector<std::size_t> dropLines; // the numbers of the samples that have one, from 0, ascending
};
HistoryPath
historyPath(const QMap<double, keyframe>& keyframes, PathOf body, bool withDropLines, const Vertex& origin = {});

// The strip of one body of one engagement: built once, drawn up to any time. Drawing needs a current GL context.
class HistoryLine {
public:
    HistoryLine(const QMap<double, keyframe>& keyframes, PathOf body, bool withDropLines, const Vertex& origin);

    const Box& box() const { return buffer_.box(); }

    // Draws the strip through the samples of which there are `sampleCount`, from the first one; without what the
    // picture can't show when there is a sight.
    void draw(std::size_t sampleCount, const LineSight* lineSight = nullptr);

private:
    void findDrops();

    std::vector<std::size_t> dropLines_; // by sample, as in the path
    std::vector<std::size_t> feet_;      // by vertex of the strip
    std::size_t firstDrop_ = 0;          // of the vertices of the drop lines alone, two to each
    std::optional<LineChunks> chunks_;
    VertexBuffer buffer_;
    // Of the current frame; members so that drawing allocates nothing.
    VertexRuns runs_;
    VertexRuns coarse_; // what of the strip is drawn without its drop lines
    VertexRuns drops_;  // which are drawn each on its own then, and once instead of down and up
};
} // namespace sorvane
