// Pieces of line strips that are left out, or drawn with fewer vertices, where nobody sees the difference.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "vertexbuffer.h"

namespace sorvane {
class Sight;

// What of a line set the picture can show, of vertices that count from `origin` (world).
struct LineSight {
    const Sight& sight;
    const Vertex& origin;
    bool mayBeCoarse = false; // by less than a quarter of a pixel
};

// Runs of vertices for VertexBuffer::drawRuns.
struct VertexRuns {
    std::vector<int> firsts;
    std::vector<int> counts;

    void clear();
    // Joins it to the last run when that ends where it begins.
    void add(std::size_t first, std::size_t count);
};

// How far the coarse lines of a line set may be off, in its unit of length: little beside the set.
double coarseTolerance(const Box& box);

// A line strip of vertices, in pieces of which each has a box around it.
class LineChunks {
public:
    // Of the `count` vertices from `first`. Adds the vertices of the coarse strip behind all others. That one does
    // without the vertices whose numbers are the `asides`, ascending: from each, which isn't the first one, the strip
    // comes back to the vertex before it.
    LineChunks(
        std::vector<Vertex>& vertices, std::size_t first, std::size_t count, double tolerance,
        std::span<const std::size_t> asides = {});

    // Adds the runs that draw the strip through its first `count` vertices; all of them without a sight. What of these
    // the coarse strip stands for is added to `coarse`.
    void addRuns(std::size_t count, const LineSight* lineSight, VertexRuns& runs, VertexRuns* coarse = nullptr) const;

private:
    struct Chunk {
        Box box;
        std::size_t coarseFirst = 0; // of the coarse strip, up to where the next one's begins
    };

    std::size_t first_;
    std::size_t count_;
    double tolerance_;
    std::vector<Chunk> chunks_; // of kChunk lines each, less for the last one
    std::size_t coarseLast_ = 0;
};
} // namespace sorvane
