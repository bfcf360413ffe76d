// A tile's mesh in OpenGL buffers.
#include "terrainmesh.h"

#include <bit>

#include <GL/glew.h>

namespace sorvane {
namespace {
void fill(GLenum target, unsigned buffer, const void* data, std::size_t bytes) {
    glBindBuffer(target, buffer);
    glBufferData(target, static_cast<GLsizeiptr>(bytes), data, GL_STATIC_DRAW);
}
} // namespace

TerrainMesh::~TerrainMesh() {
    if (buffers_[Vertices] != 0)
        glDeleteBuffers(BufferCount, buffers_);
}

void TerrainMesh::upload(
    const float* vertices, const float* normals, const float* colours, const std::uint32_t* indices, int columns,
    int rows) {
    if (buffers_[Vertices] == 0)
        glGenBuffers(BufferCount, buffers_);
    const std::size_t floatBytes =
        static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows) * 3 * sizeof(float);
    const auto strips = static_cast<std::size_t>(rows - 1);
    const std::size_t stripBytes = static_cast<std::size_t>(columns) * 2 * sizeof(std::uint32_t);
    fill(GL_ARRAY_BUFFER, buffers_[Vertices], vertices, floatBytes);
    fill(GL_ARRAY_BUFFER, buffers_[Normals], normals, floatBytes);
    fill(GL_ARRAY_BUFFER, buffers_[Colours], colours, floatBytes);
    fill(GL_ELEMENT_ARRAY_BUFFER, buffers_[Indices], indices, strips * stripBytes);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, 0);
    indexCounts_.assign(strips, 2 * columns);
    firstIndices_.resize(strips);
    for (std::size_t strip = 0; strip < strips; ++strip)
        firstIndices_[strip] = std::bit_cast<const void*>(strip * stripBytes); // an offset
}

void TerrainMesh::drawPositions() const {
    glBindBuffer(GL_ARRAY_BUFFER, buffers_[Vertices]);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glEnableClientState(GL_VERTEX_ARRAY);
    drawStrips();
}

void TerrainMesh::drawAll() const {
    glBindBuffer(GL_ARRAY_BUFFER, buffers_[Normals]);
    glNormalPointer(GL_FLOAT, 0, nullptr);
    glEnableClientState(GL_NORMAL_ARRAY);
    glBindBuffer(GL_ARRAY_BUFFER, buffers_[Colours]);
    glColorPointer(3, GL_FLOAT, 0, nullptr);
    glEnableClientState(GL_COLOR_ARRAY);
    drawPositions();
}

void TerrainMesh::drawStrips() const {
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers_[Indices]);
    glMultiDrawElements(
        GL_TRIANGLE_STRIP, indexCounts_.data(), GL_UNSIGNED_INT, firstIndices_.data(),
        static_cast<GLsizei>(indexCounts_.size()));
}
} // namespace sorvane
