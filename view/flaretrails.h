// The paths that the flares of one engagement have left behind.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "etxyz.h"
#include "linechunks.h"
#include "vertexbuffer.h"

namespace sorvane {
// One strip per flare id through its positions at the samples that list it, in time order; where a sample lists an id
// more than once, its last entry counts. Coordinates count from `origin` (world).
struct FlarePaths {
    struct Strip {
        std::size_t first = 0; // index into vertices and samples
        std::size_t count = 0; // at least 2: a single point is no line
    };
    std::vector<Vertex> vertices;       // strip after strip
    std::vector<std::uint32_t> samples; // per vertex: the number of the sample that gave it, from 0
    std::vector<Strip> strips;
};
FlarePaths flarePaths(const QMap<double, keyframe>& keyframes, const Vertex& origin = {});

// The strips of one engagement: built once, drawn up to any time. Drawing needs a current GL context.
class FlareTrails {
public:
    FlareTrails(const QMap<double, keyframe>& keyframes, const Vertex& origin);

    const Box& box() const { return buffer_.box(); }

    // Draws the strips through the first `sampleCount` samples; without what the picture can't show when there is a
    // sight.
    void draw(std::size_t sampleCount, const LineSight* lineSight = nullptr);

private:
    struct Trail {
        // How many vertices the first `sampleCount` samples have given.
        std::size_t countAt(std::size_t sampleCount) const;

        std::size_t count = 0;
        std::size_t firstSample = 0;
        std::vector<std::uint32_t> samples; // none when each sample from the first one on has given one
        LineChunks chunks;
    };

    std::vector<Trail> trails_;
    VertexBuffer buffer_;
    VertexRuns runs_; // of the current frame; a member so that drawing allocates nothing
};
} // namespace sorvane
