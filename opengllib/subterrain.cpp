// One rectangular tile of terrain: its state, its loading and its elevations.
#include "subterrain.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <span>

#include "atmfile.h"
#include "cnumericlocale.h"
#include "loadtopofile.h"
#include "messages.h"
#include "rasterlayout.h"
#include "terrainfileexists.h"
#include "terrainmesh.h"
#include "terrainshader.h"

using namespace sorvane;

namespace {
// By columns and rows, which are evenly spaced, and the heights. A height that is not a number is anywhere.
TileBounds meshBoundsOf(const TilePlacement& placement, std::span<const float> heights) {
    float least = heights[0];
    float greatest = heights[0];
    bool areNumbers = true;
    for (const float height : heights) {
        least = std::min(least, height);
        greatest = std::max(greatest, height);
        areNumbers = areNumbers && !std::isnan(height);
    }
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    return areNumbers ? placement.bounds(least, greatest) : placement.bounds(-kInfinity, kInfinity);
}
} // namespace

SubTerrain::SubTerrain() = default;

SubTerrain::~SubTerrain() = default;

void SubTerrain::setOriginX(float a0) {
    placement_.origin[0] = a0;
    boundsDirty_ = true;
}

void SubTerrain::setOriginY(float b0) {
    placement_.origin[1] = b0;
    boundsDirty_ = true;
}

void SubTerrain::setXvec(float a1, float a2) {
    placement_.xvec = {a1, a2};
    boundsDirty_ = true;
}

void SubTerrain::setYvec(float b1, float b2) {
    placement_.yvec = {b1, b2};
    boundsDirty_ = true;
}

void SubTerrain::setWidth(int postsPerRow) {
    placement_.columns = postsPerRow;
    boundsDirty_ = true;
}

void SubTerrain::setHeight(int rows) {
    placement_.rows = rows;
    boundsDirty_ = true;
}

void SubTerrain::setMinZ(float z) {
    minZ_ = z;
    boundsDirty_ = true;
}

void SubTerrain::setMaxZ(float z) {
    maxZ_ = z;
    boundsDirty_ = true;
}

void SubTerrain::getScale(float& x, float& y, float& z) const {
    x = placement_.scale[0];
    y = placement_.scale[1];
    z = placement_.scale[2];
}

std::size_t SubTerrain::posts() const {
    return static_cast<std::size_t>(placement_.columns) * static_cast<std::size_t>(placement_.rows);
}

bool SubTerrain::hasArrays() const {
    return content_->heights != nullptr && content_->colours != nullptr && content_->vertices != nullptr &&
           content_->normals != nullptr && content_->indices != nullptr &&
           content_->arraysSize == RasterSize{placement_.columns, placement_.rows};
}

bool SubTerrain::hasSize(const std::string& path, const std::optional<RasterSize>& size) const {
    if (!size || *size == RasterSize{placement_.columns, placement_.rows})
        return true; // a file without a header is its loader's to report
    printMessage(
        "SubTerrain::load: %s has %d x %d samples, the tile has %d x %d", path.c_str(), size->columns, size->rows,
        placement_.columns, placement_.rows);
    return false;
}

bool SubTerrain::hasRequiredFiles() const {
    const struct {
        const std::string& path;
        const char* message;
    } files[] = {
        {paths_.topography, "SubTerrain::load: Topo File is missing"},
        {paths_.radiance, "SubTerrain::load: Radiance File is missing"},
        {paths_.vertexShader, "SubTerrain::load: vert shader file is missing"},
        {paths_.fragmentShader, "SubTerrain::load: frag shader file is missing"},
    };
    for (const auto& [path, message] : files)
        if (!FileExists(path)) {
            printMessage("%s", message);
            return false;
        }
    return hasSize(paths_.topography, readTopographySize(paths_.topography)) &&
           hasSize(paths_.radiance, readRasterSize(paths_.radiance));
}

bool SubTerrain::chooseLighting() {
    const auto isUsable = [this](const std::string& path) {
        return FileExists(path) && hasSize(path, readRasterSize(path));
    };
    lighting_ = {};
    lighting_.isSunlit = lighting_.isReflective = isUsable(paths_.classes);
    if (!FileExists(paths_.atmosphere))
        lighting_.isSunlit = false;
    if (!isUsable(paths_.normals))
        lighting_.isSunlit = lighting_.isReflective = false;
    if (!lighting_.isSunlit)
        return true;
    const auto atmosphere = std::make_shared<AtmFile>();
    if (!atmosphere->Load(paths_.atmosphere)) {
        printMessage("SubTerrain::load: could not load atm file");
        return false;
    }
    lighting_.atmosphere = atmosphere;
    const Vector<float> sun = atmosphere->SolarDirWorld();
    lighting_.solarDirection = {sun.ElementAt(0), sun.ElementAt(1), sun.ElementAt(2)};
    return true;
}

ReflectanceFiles SubTerrain::reflectanceFiles() const {
    return {paths_.classes, paths_.classToAster,    paths_.asterDirectory,
            paths_.band,    paths_.classToMaterial, paths_.temperature};
}

ContentKey SubTerrain::key() const {
    ContentKey key;
    for (const std::string& path :
         {paths_.topography, paths_.normals, paths_.classes, paths_.radiance, paths_.fragmentShader,
          paths_.vertexShader, paths_.atmosphere, paths_.temperature, paths_.classToMaterial, paths_.classToAster,
          paths_.asterDirectory, paths_.band})
        key.addFile(path);
    const auto& [origin, xvec, yvec, scale, columns, rows] = placement_;
    key.addValues(origin, xvec, yvec, scale, columns, rows, radScale_);
    return key;
}

bool SubTerrain::load() {
    ContentKey made = key();
    if (takeShared(made))
        return true;
    MessageRecord record;
    if (!loadAlone())
        return false;
    content_->lighting = lighting_;
    TileContent::cache().add(content_, std::move(made), record.take());
    return true;
}

bool SubTerrain::takeShared(const ContentKey& key) {
    const std::shared_ptr<TileContent> shared = TileContent::cache().find(key);
    if (shared == nullptr)
        return false;
    content_ = shared;
    lighting_ = shared->lighting;
    loaded_ = true;
    return true;
}

bool SubTerrain::loadAlone() {
    printMessage("SubTerrain::load");
    loaded_ = false;
    if (!hasRequiredFiles() || !chooseLighting())
        return false;
    loaded_ = loadSteps();
    if (!loaded_) {
        unallocateArrays();
        printMessage("SubTerrain::load: could not allocate arrays");
    }
    return loaded_;
}

// What the next step may change.
TileContent& SubTerrain::ownContent() {
    if (content_.use_count() > 1)
        content_ = std::make_shared<TileContent>();
    else
        TileContent::cache().remove(content_);
    return *content_;
}

bool SubTerrain::loadSteps() {
    if (!allocateArrays() || !loadReflectances() || !loadShader())
        return false;
    loadTextures(); // a tile without its radiance map is still drawn
    return setupBuffers();
}

bool SubTerrain::allocateArrays() {
    unallocateArrays();
    // The indices of posts are 32-bit, and counts of them are handed to OpenGL as such.
    if (placement_.columns < 1 || placement_.rows < 1 ||
        std::int64_t{placement_.columns} * placement_.rows > INT32_MAX / 2)
        return false;
    if (!hasSize(paths_.topography, readTopographySize(paths_.topography)))
        return false;
    TileContent& content = *content_;
    content.heights.reset(loadTopoFile(paths_.topography));
    if (content.heights == nullptr)
        return false;
    if (placement_.scale[2] != 1.0F)
        for (float& height : std::span(content.heights.get(), posts()))
            height *= placement_.scale[2];
    if (loadNormals()) {
        content.colours = allocateSamples<float>(placement_.rows, 3 * std::int64_t{placement_.columns});
        content.vertices = allocateSamples<float>(placement_.rows, 3 * std::int64_t{placement_.columns});
        content.indices = allocateSamples<std::uint32_t>(placement_.rows - 1, 2 * std::int64_t{placement_.columns});
        content.arraysSize = {placement_.columns, placement_.rows};
        if (content.colours != nullptr && content.vertices != nullptr && content.indices != nullptr)
            return true;
    }
    unallocateArrays();
    return false;
}

bool SubTerrain::loadNormals() {
    const bool isLit = lighting_.isSunlit || lighting_.isReflective;
    if (isLit && !hasSize(paths_.normals, readRasterSize(paths_.normals)))
        return false;
    TileContent& content = ownContent();
    if (isLit) {
        content.normals.reset(loadNormFile(paths_.normals));
    } else {
        content.normals = allocateSamples<Vertex3>(placement_.rows, placement_.columns);
        if (content.normals != nullptr)
            std::fill_n(content.normals.get(), posts(), Vertex3{0.0F, 0.0F, 1.0F});
    }
    return content.normals != nullptr;
}

bool SubTerrain::loadReflectances() {
    if (!hasArrays())
        return false;
    const ReflectanceFiles files = reflectanceFiles();
    const ReflectanceRoute route = lighting_.isReflective ? reflectanceRoute(files) : ReflectanceRoute::None;
    if (route != ReflectanceRoute::None && !hasSize(files.classes, readRasterSize(files.classes)))
        return false;
    float* const colours = ownContent().colours.get();
    if (colours == nullptr)
        return false;
    if (route != ReflectanceRoute::None)
        return fillReflectances(files, route, posts(), colours);
    lighting_.isReflective = false;
    std::fill_n(colours, 3 * posts(), 0.0F);
    return true;
}

void SubTerrain::fillVertices() {
    const sorvane::TilePlacement placement = placement_; // a copy, which no write through `at` can change
    float* at = content_->vertices.get();
    const float* height = content_->heights.get();
    for (int row = 0; row < placement.rows; ++row)
        for (int column = 0; column < placement.columns; ++column) {
            const std::array<float, 3> position = placement.position(column, row, *height++);
            at = std::ranges::copy(position, at).out;
        }
}

void SubTerrain::fillIndices() {
    // Rows that run north need the other order for the triangles to face up.
    const auto width = static_cast<std::uint32_t>(placement_.columns);
    const std::uint32_t first = placement_.yvec[1] > 0.0F ? width : 0;
    const std::uint32_t second = width - first;
    std::uint32_t* at = content_->indices.get();
    for (std::uint32_t row = 0; row + 1 < static_cast<std::uint32_t>(placement_.rows); ++row)
        for (std::uint32_t post = row * width; post < (row + 1) * width; ++post) {
            *at++ = post + first;
            *at++ = post + second;
        }
}

bool SubTerrain::setupBuffers() {
    if (!hasArrays())
        return false;
    TileContent& content = ownContent();
    if (!hasArrays())
        return false;
    fillVertices();
    content.bounds = meshBoundsOf(placement_, {content.heights.get(), posts()});
    if (!(placement_.xvec[0] > 0.0F)) {
        printMessage("SubTerrain::SetupBuffers: x-direction vector points west");
        printMessage("\tThis logic needs to be added. Sorry :(");
        return false;
    }
    fillIndices();
    content.mesh = std::make_unique<TerrainMesh>();
    content.mesh->upload(
        content.vertices.get(), &content.normals[0].x, content.colours.get(), content.indices.get(), placement_.columns,
        placement_.rows);
    return true;
}

bool SubTerrain::getElevation(float x, float y, float& z) const {
    z = 0.0F;
    if (!loaded_ || !hasArrays()) {
        printMessage("SubTerrain::getElevation: not loaded");
        return false;
    }
    const std::optional<std::size_t> post = placement_.postAt(x, y);
    if (post)
        z = content_->heights[*post];
    return post.has_value();
}

const SubTerrain::Bounds& SubTerrain::bounds() {
    recalculateBounds();
    return bounds_;
}

void SubTerrain::recalculateBounds() {
    if (boundsDirty_)
        bounds_ = placement_.bounds(minZ_, maxZ_);
    boundsDirty_ = false;
}

bool SubTerrain::isVisible(float, float, float, float, float, float, float, float, float) {
    recalculateBounds();
    return true;
}

void SubTerrain::print() const {
    const CNumericLocale decimalPoint;
    std::puts("Subterrain:");
    std::printf("\tOrigin: (%f, %f)\n", double{placement_.origin[0]}, double{placement_.origin[1]});
    std::printf(
        "\tx-vec: %f x (%f, %f)\n", double{placement_.scale[0]}, double{placement_.xvec[0]},
        double{placement_.xvec[1]});
    std::printf(
        "\ty-vec: %f x (%f, %f)\n", double{placement_.scale[1]}, double{placement_.yvec[0]},
        double{placement_.yvec[1]});
    std::printf("\twidth (x-size): %d\n", placement_.columns);
    std::printf("\theight (y-size): %d\n", placement_.rows);
    std::printf("\tmin/max Z: %f x [%f, %f]\n", double{placement_.scale[2]}, double{minZ_}, double{maxZ_});
}
