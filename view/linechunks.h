// Pieces of line strips that are drawn or left out as one.
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
};

// Runs of vertices for VertexBuffer::drawRuns.
struct VertexRuns {
    std::vector<int> firsts;
    std::vector<int> counts;

    void clear();
    // Joins it to the last run when that ends where it begins.
    void add(std::size_t first, std::size_t count);
};

// A line strip of vertices, in pieces of which each has a box around it.
class LineChunks {
public:
    // Of the vertices from `first`, of which there are `count`.
    LineChunks(std::span<const Vertex> vertices, std::size_t first, std::size_t count);

    // Adds the runs that draw the strip through its first `count` vertices; all of it without a sight.
    void addRuns(std::size_t count, const LineSight* lineSight, VertexRuns& runs) const;

private:
    std::size_t first_;
    std::vector<Box> boxes_; // of kChunk lines each, less for the last one
};
} // namespace sorvane
