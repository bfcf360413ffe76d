// Pieces of line strips that are drawn or left out as one.
#include "linechunks.h"

#include <algorithm>

#include "sight.h"

namespace sorvane {
namespace {
// Lines in a piece: so many that looking at its box takes little beside drawing it.
constexpr std::size_t kChunk = 64;
} // namespace

void VertexRuns::clear() {
    firsts.clear();
    counts.clear();
}

void VertexRuns::add(std::size_t first, std::size_t count) {
    const int begin = static_cast<int>(first);
    const int added = static_cast<int>(count);
    // The last vertex of a run is where the next line begins.
    if (!firsts.empty() && firsts.back() + counts.back() - 1 == begin) {
        counts.back() += added - 1;
        return;
    }
    firsts.push_back(begin);
    counts.push_back(added);
}

LineChunks::LineChunks(std::span<const Vertex> vertices, std::size_t first, std::size_t count) : first_(first) {
    boxes_.reserve(count / kChunk + 1);
    for (std::size_t begin = 0; begin + 1 < count; begin += kChunk)
        boxes_.push_back(boxOf(vertices.subspan(first + begin, std::min(kChunk + 1, count - begin))));
}

void LineChunks::addRuns(std::size_t count, const LineSight* lineSight, VertexRuns& runs) const {
    if (count < 2)
        return;
    if (lineSight == nullptr)
        return runs.add(first_, count);
    for (std::size_t begin = 0; begin + 1 < count; begin += kChunk)
        if (lineSight->sight.reaches(boxes_[begin / kChunk], lineSight->origin))
            runs.add(first_ + begin, std::min(kChunk + 1, count - begin));
}
} // namespace sorvane
