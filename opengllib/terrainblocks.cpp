// The mesh of a tile in blocks. No OpenGL.
#include "terrainblocks.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "largepages.h"

namespace sorvane {
namespace {
std::size_t blocksFor(int posts) {
    return posts < 2 ? 0 : static_cast<std::size_t>((posts - 2) / BlockGrid::kCells + 1);
}

class Bounds {
public:
    void include(const std::array<float, 3>& position) {
        if (isFirst_)
            bounds_ = {position, position};
        isFirst_ = false;
        isNumber_ = isNumber_ && !std::isnan(position[2]);
        for (std::size_t axis = 0; axis < position.size(); ++axis) {
            bounds_.minimum[axis] = std::min(bounds_.minimum[axis], position[axis]);
            bounds_.maximum[axis] = std::max(bounds_.maximum[axis], position[axis]);
        }
    }

    TileBounds get() const {
        TileBounds bounds = bounds_;
        if (!isNumber_) { // which is drawn anywhere
            bounds.minimum[2] = -std::numeric_limits<float>::infinity();
            bounds.maximum[2] = std::numeric_limits<float>::infinity();
        }
        return bounds;
    }

private:
    TileBounds bounds_;
    bool isFirst_ = true;
    bool isNumber_ = true;
};

void fill(const TilePlacement& placement, const TileRasters& rasters, const VertexLayout& layout, TerrainBlock& block) {
    block.vertices.resize(
        static_cast<std::size_t>(layout.floats()) * static_cast<std::size_t>(block.columns) *
        static_cast<std::size_t>(block.rows));
    float* at = block.vertices.data();
    Bounds bounds;
    for (int row = block.firstRow; row < block.firstRow + block.rows; ++row)
        for (int column = block.firstColumn; column < block.firstColumn + block.columns; ++column) {
            const auto post = static_cast<std::size_t>(row) * static_cast<std::size_t>(placement.columns) +
                              static_cast<std::size_t>(column);
            const std::array<float, 3> position = placement.position(column, row, rasters.heights[post]);
            bounds.include(position);
            at = std::ranges::copy(position, at).out;
            if (layout.hasNormals) {
                const Vertex3& normal = rasters.normals[post];
                *at++ = normal.x;
                *at++ = normal.y;
                *at++ = normal.z;
            }
            if (layout.hasColours) {
                *at++ = rasters.reflectances[rasters.classes[post]];
                *at++ = 0.0F;
                *at++ = 0.0F;
            }
        }
    block.bounds = bounds.get();
}
} // namespace

BlockGrid::BlockGrid(RasterSize posts)
    : posts_(posts), across_(blocksFor(posts.columns)), down_(blocksFor(posts.rows)) {}

TerrainBlock BlockGrid::block(std::size_t number) const {
    TerrainBlock block;
    block.firstColumn = static_cast<int>(number % across_) * kCells;
    block.firstRow = static_cast<int>(number / across_) * kCells;
    block.columns = std::min(kCells + 1, posts_.columns - block.firstColumn);
    block.rows = std::min(kCells + 1, posts_.rows - block.firstRow);
    return block;
}

std::vector<TerrainBlock> makeBlocks(
    const TilePlacement& placement, TileRasters& rasters, const VertexLayout& layout, std::size_t first,
    std::size_t count) {
    const BlockGrid grid(rasters.size);
    std::vector<TerrainBlock> blocks;
    blocks.reserve(count);
    for (std::size_t number = first; number < std::min(first + count, grid.count()); ++number) {
        TerrainBlock& block = blocks.emplace_back(grid.block(number));
        fill(placement, rasters, layout, block);
        const bool endsBand = block.firstColumn + block.columns == rasters.size.columns;
        if (endsBand && layout.hasNormals) { // the next band has the last row, too
            const auto posts = static_cast<std::size_t>(rasters.size.columns);
            clearPages(
                rasters.normals.get() + static_cast<std::size_t>(block.firstRow) * posts,
                static_cast<std::size_t>(block.rows - 1) * posts * sizeof(Vertex3));
        }
    }
    return blocks;
}

std::size_t stripLength(int columns, int rows) {
    const auto strips = static_cast<std::size_t>(std::max(rows - 1, 0));
    return strips == 0 ? 0 : strips * 2 * static_cast<std::size_t>(columns) + 2 * (strips - 1);
}

std::vector<std::uint16_t> stripIndices(int columns, int rows, bool isNorthward) {
    std::vector<std::uint16_t> indices;
    indices.reserve(stripLength(columns, rows));
    const int first = isNorthward ? columns : 0;
    const int second = columns - first;
    for (int row = 0; row + 1 < rows; ++row) {
        if (row > 0) { // triangles without an area lead to the next row
            indices.push_back(indices.back());
            indices.push_back(static_cast<std::uint16_t>(row * columns + first));
        }
        for (int post = row * columns; post < (row + 1) * columns; ++post) {
            indices.push_back(static_cast<std::uint16_t>(post + first));
            indices.push_back(static_cast<std::uint16_t>(post + second));
        }
    }
    return indices;
}
} // namespace sorvane
