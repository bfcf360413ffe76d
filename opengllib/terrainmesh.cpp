// A tile's mesh in OpenGL buffers, one for each of its blocks.
#include "terrainmesh.h"

#include <algorithm>
#include <bit>

#include <GL/glew.h>

namespace sorvane {
namespace {
template <class Values> unsigned filledBuffer(GLenum target, const Values& values) {
    unsigned buffer = 0;
    glGenBuffers(1, &buffer);
    glBindBuffer(target, buffer);
    glBufferData(target, static_cast<GLsizeiptr>(std::span(values).size_bytes()), values.data(), GL_STATIC_DRAW);
    glBindBuffer(target, 0);
    return buffer;
}

// Keeps the driver from running far ahead of what has been drawn: a software renderer takes hundreds of megabytes for
// what it has still to draw.
class DrawingPace {
public:
    DrawingPace() = default;
    ~DrawingPace() {
        if (fence_ != nullptr)
            glDeleteSync(fence_);
    }
    DrawingPace(const DrawingPace&) = delete;
    DrawingPace& operator=(const DrawingPace&) = delete;

    void step() {
        constexpr int kBlocksAhead = 4;
        if (++steps_ % kBlocksAhead != 0 || glFenceSync == nullptr)
            return;
        if (fence_ != nullptr) {
            glClientWaitSync(fence_, GL_SYNC_FLUSH_COMMANDS_BIT, GL_TIMEOUT_IGNORED);
            glDeleteSync(fence_);
        }
        fence_ = glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0);
    }

private:
    GLsync fence_ = nullptr;
    int steps_ = 0;
};

const void* offset(int floats) {
    return std::bit_cast<const void*>(static_cast<std::size_t>(floats) * sizeof(float));
}
} // namespace

TerrainMesh::TerrainMesh(RasterSize posts, const VertexLayout& layout, bool isNorthward)
    : grid_(posts), layout_(layout), isNorthward_(isNorthward), mostRows_(std::min(posts.rows, BlockGrid::kCells + 1)) {
    blocks_.reserve(grid_.count());
}

TerrainMesh::~TerrainMesh() {
    for (const Block& block : blocks_)
        glDeleteBuffers(1, &block.buffer);
    for (const Indices& indices : indices_)
        glDeleteBuffers(1, &indices.buffer);
}

void TerrainMesh::add(std::span<const TerrainBlock> blocks) {
    for (const TerrainBlock& added : blocks) {
        indicesFor(added.columns);
        if (blocks_.empty())
            bounds_ = added.bounds;
        for (std::size_t axis = 0; axis < bounds_.minimum.size(); ++axis) {
            bounds_.minimum[axis] = std::min(bounds_.minimum[axis], added.bounds.minimum[axis]);
            bounds_.maximum[axis] = std::max(bounds_.maximum[axis], added.bounds.maximum[axis]);
        }
        blocks_.push_back({filledBuffer(GL_ARRAY_BUFFER, added.vertices), added.columns, added.rows, added.bounds});
    }
}

unsigned TerrainMesh::indicesFor(int columns) {
    const auto found = std::ranges::find(indices_, columns, &Indices::columns);
    if (found != indices_.end())
        return found->buffer;
    const std::vector<std::uint16_t> indices = stripIndices(columns, mostRows_, isNorthward_);
    return indices_.emplace_back(Indices{filledBuffer(GL_ELEMENT_ARRAY_BUFFER, indices), columns}).buffer;
}

void TerrainMesh::drawPositions() const {
    glEnableClientState(GL_VERTEX_ARRAY);
    DrawingPace pace;
    for (const Block& block : blocks_) {
        draw(block, false);
        pace.step();
    }
}

void TerrainMesh::drawAll(const Choice& isWanted) const {
    glEnableClientState(GL_VERTEX_ARRAY);
    if (layout_.hasNormals)
        glEnableClientState(GL_NORMAL_ARRAY);
    else
        glNormal3f(0.0F, 0.0F, 1.0F);
    if (layout_.hasColours)
        glEnableClientState(GL_COLOR_ARRAY);
    else
        glColor3f(0.0F, 0.0F, 0.0F);
    DrawingPace pace;
    for (const Block& block : blocks_)
        if (isWanted(block.bounds)) {
            draw(block, true);
            pace.step();
        }
}

void TerrainMesh::draw(const Block& block, bool isShaded) const {
    const auto stride = static_cast<GLsizei>(static_cast<std::size_t>(layout_.floats()) * sizeof(float));
    glBindBuffer(GL_ARRAY_BUFFER, block.buffer);
    glVertexPointer(3, GL_FLOAT, stride, nullptr);
    if (isShaded && layout_.hasNormals)
        glNormalPointer(GL_FLOAT, stride, offset(3));
    if (isShaded && layout_.hasColours)
        glColorPointer(3, GL_FLOAT, stride, offset(layout_.floats() - 3));
    const auto indices = std::ranges::find(indices_, block.columns, &Indices::columns);
    glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, indices->buffer);
    glDrawRangeElements(
        GL_TRIANGLE_STRIP, 0, static_cast<GLuint>(block.columns * block.rows - 1),
        static_cast<GLsizei>(stripLength(block.columns, block.rows)), GL_UNSIGNED_SHORT, nullptr);
}

TerrainMesh::Post TerrainMesh::post(int column, int row) const {
    for (std::size_t number = 0; number < blocks_.size(); ++number) {
        const TerrainBlock place = grid_.block(number);
        const int right = column - place.firstColumn;
        const int down = row - place.firstRow;
        if (right < 0 || right >= place.columns || down < 0 || down >= place.rows)
            continue;
        const auto floats = static_cast<std::size_t>(layout_.floats());
        const auto at = static_cast<std::size_t>(down * place.columns + right) * floats;
        std::vector<float> values(floats);
        glBindBuffer(GL_ARRAY_BUFFER, blocks_[number].buffer);
        glGetBufferSubData(
            GL_ARRAY_BUFFER, static_cast<GLintptr>(at * sizeof(float)), static_cast<GLsizeiptr>(floats * sizeof(float)),
            values.data());
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        Post post;
        std::copy_n(values.begin(), 3, post.position.begin());
        if (layout_.hasNormals)
            std::copy_n(values.begin() + 3, 3, post.normal.begin());
        if (layout_.hasColours)
            std::copy_n(values.end() - 3, 3, post.colour.begin());
        return post;
    }
    return {};
}
} // namespace sorvane
