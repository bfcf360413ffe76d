// A tile's mesh in OpenGL buffers: a grid of posts, drawn as a triangle strip between each two rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace sorvane {
class TerrainMesh {
public:
    TerrainMesh() = default;
    ~TerrainMesh(); // needs the context that upload needed
    TerrainMesh(const TerrainMesh&) = delete;
    TerrainMesh& operator=(const TerrainMesh&) = delete;

    // Copies the arrays into buffers: three floats per post each, and the indices of `rows` - 1 strips, 2 · `columns`
    // each. The arrays are not needed afterwards.
    void upload(
        const float* vertices, const float* normals, const float* colours, const std::uint32_t* indices, int columns,
        int rows);

    // Draws all strips with the positions only, or with normals and colours too. The caller keeps the vertex-array
    // state.
    void drawPositions() const;
    void drawAll() const;

private:
    void drawStrips() const;

    enum Buffer { Vertices, Normals, Indices, Colours, BufferCount };
    unsigned buffers_[BufferCount]{};
    std::vector<int> indexCounts_; // of each strip
    std::vector<const void*> firstIndices_;
};
} // namespace sorvane
