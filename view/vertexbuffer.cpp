// Vertices of a line set, uploaded once and drawn many times.
#include "vertexbuffer.h"

#include <algorithm>
#include <utility>

#include "glapi.h"

namespace sorvane {
namespace {
bool hasBufferObjects() {
    return glBindBuffer != nullptr;
}
} // namespace

Box boxOf(std::span<const Vertex> vertices) {
    Box box = vertices.empty() ? Box{} : Box{vertices.front(), vertices.front()};
    for (const Vertex& vertex : vertices)
        for (std::size_t axis = 0; axis < 3; ++axis) {
            box.low[axis] = std::min(box.low[axis], vertex[axis]);
            box.high[axis] = std::max(box.high[axis], vertex[axis]);
        }
    return box;
}

VertexBuffer::~VertexBuffer() {
    if (buffer_ != 0)
        glDeleteBuffers(1, &buffer_);
}

void VertexBuffer::assign(std::vector<Vertex> vertices) {
    vertices_ = std::move(vertices);
    count_ = vertices_.size();
    box_ = boxOf(vertices_);
    isUploaded_ = false;
}

void VertexBuffer::draw(unsigned int mode, std::size_t count) {
    if (count == 0)
        return;
    bind();
    glDrawArrays(mode, 0, static_cast<GLsizei>(count));
    unbind();
}

void VertexBuffer::drawRuns(unsigned int mode, const std::vector<int>& firsts, const std::vector<int>& counts) {
    if (firsts.empty())
        return;
    bind();
    if (glMultiDrawArrays != nullptr)
        glMultiDrawArrays(mode, firsts.data(), counts.data(), static_cast<GLsizei>(firsts.size()));
    else
        for (std::size_t run = 0; run < firsts.size(); ++run)
            glDrawArrays(mode, firsts[run], counts[run]);
    unbind();
}

void VertexBuffer::bind() {
    const void* start = vertices_.data();
    if (hasBufferObjects()) {
        if (buffer_ == 0)
            glGenBuffers(1, &buffer_);
        glBindBuffer(GL_ARRAY_BUFFER, buffer_);
        if (!isUploaded_) {
            const auto size = static_cast<GLsizeiptr>(vertices_.size() * sizeof(Vertex));
            glBufferData(GL_ARRAY_BUFFER, size, vertices_.data(), GL_STATIC_DRAW);
            isUploaded_ = true;
            vertices_ = std::vector<Vertex>(); // {} alone would keep the memory
        }
        start = nullptr;
    }
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, start);
}

void VertexBuffer::unbind() {
    glDisableClientState(GL_VERTEX_ARRAY);
    if (hasBufferObjects())
        glBindBuffer(GL_ARRAY_BUFFER, 0);
}
} // namespace sorvane
