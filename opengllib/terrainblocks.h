// The mesh of a tile in blocks: what is uploaded at a time, and what is drawn or not. No OpenGL.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "rastersize.h"
#include "tilerasters.h"

namespace sorvane {
// A rectangle of cells. Neighbours have the posts between them in common.
struct TerrainBlock {
    int firstColumn = 0;
    int firstRow = 0;
    int columns = 0; // posts
    int rows = 0;
    TileBounds bounds{}; // infinite when a height is not a number
    // Row by row the floats of each post, as VertexLayout says.
    std::vector<float> vertices;
};

// Three floats each: the position; the normal, unless all point up; red, the reflectance, and two zeros, unless nothing
// reflects.
struct VertexLayout {
    bool hasNormals = false;
    bool hasColours = false;

    int floats() const { return 3 + (hasNormals ? 3 : 0) + (hasColours ? 3 : 0); }
};

// How a tile is cut: row by row, from the south-west where rows run north.
class BlockGrid {
public:
    static constexpr int kCells = 128; // of a block at most, to a side; the number of a post in it has 16 bits

    BlockGrid() = default;
    explicit BlockGrid(RasterSize posts);

    std::size_t count() const { return across_ * down_; }
    // Where block `number` lies, without vertices.
    TerrainBlock block(std::size_t number) const;

private:
    RasterSize posts_{};
    std::size_t across_ = 0;
    std::size_t down_ = 0;
};

// Makes `count` blocks from block `first` on. Gives the normals' memory back, band by band: to be called for all blocks
// in their order, once.
std::vector<TerrainBlock> makeBlocks(
    const TilePlacement& placement, TileRasters& rasters, const VertexLayout& layout, std::size_t first,
    std::size_t count);

// The posts of a block in the order in which one triangle strip goes through all its rows. Fewer rows take the
// beginning of it. `isNorthward` says which way rows run: triangles face up either way.
std::vector<std::uint16_t> stripIndices(int columns, int rows, bool isNorthward);
// How many those are.
std::size_t stripLength(int columns, int rows);
} // namespace sorvane
