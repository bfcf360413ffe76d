// Vertices of a line set, uploaded once and drawn many times.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace sorvane {
using Vertex = std::array<float, 3>; // x, y, z

// `position` relative to `origin`; each coordinate is rounded at most once.
inline Vertex vertexFrom(const Vertex& origin, const float (&position)[3]) {
    return {position[0] - origin[0], position[1] - origin[1], position[2] - origin[2]};
}

// Around vertices; of none a point.
struct Box {
    Vertex low{};
    Vertex high{};
};
Box boxOf(std::span<const Vertex> vertices);

// Holds the vertices in memory until, where GLEW's entry points are loaded, the first draw moves them into a GL buffer.
// Drawing needs a current GL context, and so does the destructor once something has been drawn.
class VertexBuffer {
public:
    VertexBuffer() = default;
    ~VertexBuffer();
    VertexBuffer(const VertexBuffer&) = delete;
    VertexBuffer& operator=(const VertexBuffer&) = delete;

    void assign(std::vector<Vertex> vertices);
    std::size_t count() const { return count_; }
    const Box& box() const { return box_; }

    // Draws the first `count` vertices as `mode`.
    void draw(unsigned int mode, std::size_t count);
    // Draws several runs of vertices, each as `mode`, in one call.
    void drawRuns(unsigned int mode, const std::vector<int>& firsts, const std::vector<int>& counts);

private:
    void bind();
    void unbind();

    std::vector<Vertex> vertices_; // none once they are uploaded
    std::size_t count_ = 0;
    Box box_;
    unsigned int buffer_ = 0;
    bool isUploaded_ = false;
};
} // namespace sorvane
