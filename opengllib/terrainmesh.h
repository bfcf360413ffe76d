// A tile's mesh in OpenGL buffers, one for each of its blocks.
#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <vector>

#include "terrainblocks.h"

namespace sorvane {
class TerrainMesh {
public:
    // Rows run north or south. Needs a context, as all but the questions does.
    TerrainMesh(RasterSize posts, const VertexLayout& layout, bool isNorthward);
    ~TerrainMesh();
    TerrainMesh(const TerrainMesh&) = delete;
    TerrainMesh& operator=(const TerrainMesh&) = delete;

    const VertexLayout& layout() const { return layout_; }
    // How many blocks there are, and how many of them have been added.
    std::size_t blockCount() const { return grid_.count(); }
    std::size_t addedCount() const { return blocks_.size(); }
    bool isWhole() const { return addedCount() == blockCount(); }
    // Around what has been added.
    const TileBounds& bounds() const { return bounds_; }

    // Copies the next blocks, in the order of the grid, into buffers.
    void add(std::span<const TerrainBlock> blocks);

    // Draws the blocks that are wanted, with their positions only or with normals and colours too. The caller keeps the
    // vertex-array state, the current normal and the current colour.
    using Choice = std::function<bool(const TileBounds&)>;
    void drawPositions() const;
    void drawAll(const Choice& isWanted) const;

    // For tests: what the buffers hold of a post, three floats each.
    struct Post {
        std::array<float, 3> position{};
        std::array<float, 3> normal{0.0F, 0.0F, 1.0F};
        std::array<float, 3> colour{};
    };
    Post post(int column, int row) const;

private:
    struct Block {
        unsigned buffer = 0;
        int columns = 0;
        int rows = 0;
        TileBounds bounds{};
    };
    // Blocks of as many columns have the same indices.
    struct Indices {
        unsigned buffer = 0;
        int columns = 0;
    };

    unsigned indicesFor(int columns);
    void draw(const Block& block, bool isShaded) const;

    BlockGrid grid_;
    VertexLayout layout_;
    bool isNorthward_;
    int mostRows_; // of a block
    std::vector<Block> blocks_;
    std::vector<Indices> indices_;
    TileBounds bounds_{};
};
} // namespace sorvane
