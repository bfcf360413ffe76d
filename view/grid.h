// The reference grid on the ground plane with its altitude marks.
#pragma once

#include "vertexbuffer.h"

namespace sorvane {
// The grid's line segments, two vertices each: 21 lines each way every 1000 units out to 10,000, a vertical axis up to
// 5000, and an X every 304.8 units (1000 ft) up to 16,000 ft.
std::vector<Vertex> gridSegments();

class Grid {
public:
    Grid() { buffer_.assign(gridSegments()); }
    // With lines of `width` pixels of the viewport. Needs a current GL context.
    void draw(float width);

private:
    VertexBuffer buffer_;
};
} // namespace sorvane
