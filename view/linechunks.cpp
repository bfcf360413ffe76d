// Pieces of line strips that are left out, or drawn with fewer vertices, where nobody sees the difference.
#include "linechunks.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "sight.h"

namespace sorvane {
namespace {
// Lines in a piece: so many that looking at its box takes little beside drawing it.
constexpr std::size_t kChunk = 64;
constexpr double kSeenPixels = 0.25;

double distanceToLine(const Vertex& point, const Vertex& from, const Vertex& to) {
    std::array<double, 3> along{};
    std::array<double, 3> away{};
    double square = 0.0;
    double product = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const double start = from[axis];
        along[axis] = to[axis] - start;
        away[axis] = point[axis] - start;
        square += along[axis] * along[axis];
        product += along[axis] * away[axis];
    }
    const double part = square > 0.0 ? std::clamp(product / square, 0.0, 1.0) : 0.0;
    return std::hypot(away[0] - part * along[0], away[1] - part * along[1], away[2] - part * along[2]);
}

// Keeps of the vertices between two that are kept those that a line between the two would miss by more than the
// tolerance (D. H. Douglas and T. K. Peucker, 1973).
void keepBetween(std::span<const Vertex> vertices, double tolerance, std::vector<Vertex>& kept) {
    if (vertices.size() < 3)
        return;
    std::size_t farthest = 0;
    double distance = tolerance;
    for (std::size_t i = 1; i + 1 < vertices.size(); ++i) {
        const double missed = distanceToLine(vertices[i], vertices.front(), vertices.back());
        if (!(missed <= distance)) {
            distance = missed;
            farthest = i;
        }
    }
    if (farthest == 0)
        return;
    keepBetween(vertices.first(farthest + 1), tolerance, kept);
    kept.push_back(vertices[farthest]);
    keepBetween(vertices.subspan(farthest), tolerance, kept);
}
} // namespace

double coarseTolerance(const Box& box) {
    constexpr double kPart = 1.0 / 4096.0;
    double square = 0.0;
    for (std::size_t axis = 0; axis < 3; ++axis)
        square += std::pow(static_cast<double>(box.high[axis]) - static_cast<double>(box.low[axis]), 2);
    return kPart * std::sqrt(square);
}

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

LineChunks::LineChunks(
    std::vector<Vertex>& vertices, std::size_t first, std::size_t count, double tolerance,
    std::span<const std::size_t> asides)
    : first_(first), count_(count), tolerance_(tolerance) {
    if (count < 2)
        return;
    chunks_.reserve(count / kChunk + 1);
    std::vector<Vertex> coarse;
    std::vector<Vertex> straight; // what a piece has without its asides
    for (std::size_t begin = 0; begin + 1 < count; begin += kChunk) {
        const auto chunk =
            std::span<const Vertex>(vertices).subspan(first + begin, std::min(kChunk + 1, count - begin));
        chunks_.push_back({boxOf(chunk), vertices.size() + coarse.size()});
        straight.assign(chunk.begin(), chunk.end());
        for (auto aside = std::ranges::lower_bound(asides, begin);
             aside != asides.end() && *aside < begin + chunk.size(); ++aside)
            straight[*aside - begin] = vertices[first + *aside - 1];
        coarse.push_back(straight.front());
        keepBetween(straight, tolerance, coarse);
    }
    coarse.push_back(vertices[first + count - 1]);
    coarseLast_ = vertices.size() + coarse.size() - 1;
    vertices.insert(vertices.end(), coarse.begin(), coarse.end());
}

void LineChunks::addRuns(std::size_t count, const LineSight* lineSight, VertexRuns& runs, VertexRuns* coarse) const {
    if (count < 2)
        return;
    if (lineSight == nullptr)
        return runs.add(first_, count);
    const auto& [sight, origin, mayBeCoarse] = *lineSight;
    for (std::size_t begin = 0; begin + 1 < count; begin += kChunk) {
        const std::size_t number = begin / kChunk;
        const auto& [box, coarseFirst] = chunks_[number];
        if (!sight.reaches(box, origin))
            continue;
        const bool isWhole = count == count_ || begin + kChunk < count;
        if (mayBeCoarse && isWhole && sight.pixelsOf(tolerance_, box, origin) < kSeenPixels) {
            const std::size_t next = number + 1 < chunks_.size() ? chunks_[number + 1].coarseFirst : coarseLast_;
            runs.add(coarseFirst, next - coarseFirst + 1);
            if (coarse != nullptr)
                coarse->add(begin, std::min(kChunk + 1, count - begin));
        } else {
            runs.add(first_ + begin, std::min(kChunk + 1, count - begin));
        }
    }
}
} // namespace sorvane
