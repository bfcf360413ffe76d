// One rectangular tile of terrain: its state, its loading and its elevations.
#include "subterrain.h"

#include <algorithm>
#include <cstdio>
#include <span>

#include "atmfile.h"
#include "cnumericlocale.h"
#include "loadtopofile.h"
#include "messages.h"
#include "rasterlayout.h"
#include "terrainfileexists.h"
#include "terrainmesh.h"
#include "terrainshader.h"

SubTerrain::SubTerrain() = default;

SubTerrain::~SubTerrain() {
    unallocateArrays();
}

void SubTerrain::setOriginX(float a0) {
    originX_ = a0;
    boundsDirty_ = true;
}

void SubTerrain::setOriginY(float b0) {
    originY_ = b0;
    boundsDirty_ = true;
}

void SubTerrain::setXvec(float a1, float a2) {
    xvec_ = {a1, a2};
    boundsDirty_ = true;
}

void SubTerrain::setYvec(float b1, float b2) {
    yvec_ = {b1, b2};
    boundsDirty_ = true;
}

void SubTerrain::setWidth(int postsPerRow) {
    width_ = postsPerRow;
    boundsDirty_ = true;
}

void SubTerrain::setHeight(int rows) {
    height_ = rows;
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
    x = scale_[0];
    y = scale_[1];
    z = scale_[2];
}

std::size_t SubTerrain::posts() const {
    return static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_);
}

bool SubTerrain::hasSize(const std::string& path, const std::optional<RasterSize>& size) const {
    if (!size || *size == RasterSize{width_, height_})
        return true; // a file without a header is its loader's to report
    printMessage(
        "SubTerrain::load: %s has %d x %d samples, the tile has %d x %d", path.c_str(), size->columns, size->rows,
        width_, height_);
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
    sunlit_ = reflective_ = isUsable(paths_.classes);
    if (!FileExists(paths_.atmosphere))
        sunlit_ = false;
    if (!isUsable(paths_.normals))
        sunlit_ = reflective_ = false;
    solarDir_ = {0.0F, 0.0F, 1.0F};
    atmosphere_.reset();
    if (!sunlit_)
        return true;
    atmosphere_ = std::make_unique<AtmFile>();
    if (!atmosphere_->Load(paths_.atmosphere)) {
        printMessage("SubTerrain::load: could not load atm file");
        return false;
    }
    const Vector<float> sun = atmosphere_->SolarDirWorld();
    solarDir_ = {sun.ElementAt(0), sun.ElementAt(1), sun.ElementAt(2)};
    return true;
}

ReflectanceFiles SubTerrain::reflectanceFiles() const {
    return {paths_.classes, paths_.classToAster,    paths_.asterDirectory,
            paths_.band,    paths_.classToMaterial, paths_.temperature};
}

bool SubTerrain::load() {
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

bool SubTerrain::loadSteps() {
    if (!allocateArrays() || !loadReflectances() || !loadShader())
        return false;
    loadTextures(); // a tile without its radiance map is still drawn
    return setupBuffers();
}

bool SubTerrain::allocateArrays() {
    unallocateArrays();
    // The indices of posts are 32-bit, and counts of them are handed to OpenGL as such.
    if (width_ < 1 || height_ < 1 || std::int64_t{width_} * height_ > INT32_MAX / 2)
        return false;
    heights_.reset(loadTopoFile(paths_.topography));
    if (heights_ == nullptr)
        return false;
    if (scale_[2] != 1.0F)
        for (float& height : std::span(heights_.get(), posts()))
            height *= scale_[2];
    if (loadNormals()) {
        colours_ = allocateSamples<float>(height_, 3 * std::int64_t{width_});
        vertices_ = allocateSamples<float>(height_, 3 * std::int64_t{width_});
        indices_ = allocateSamples<std::uint32_t>(height_ - 1, 2 * std::int64_t{width_});
        if (colours_ != nullptr && vertices_ != nullptr && indices_ != nullptr)
            return true;
    }
    unallocateArrays();
    return false;
}

bool SubTerrain::loadNormals() {
    if (sunlit_ || reflective_) {
        normals_.reset(loadNormFile(paths_.normals));
    } else {
        normals_ = allocateSamples<Vertex3>(height_, width_);
        if (normals_ != nullptr)
            std::fill_n(normals_.get(), posts(), Vertex3{0.0F, 0.0F, 1.0F});
    }
    return normals_ != nullptr;
}

bool SubTerrain::loadReflectances() {
    const ReflectanceFiles files = reflectanceFiles();
    const ReflectanceRoute route = reflective_ ? reflectanceRoute(files) : ReflectanceRoute::None;
    if (route == ReflectanceRoute::None) {
        reflective_ = false;
        std::fill_n(colours_.get(), 3 * posts(), 0.0F);
        return true;
    }
    return fillReflectances(files, route, posts(), colours_.get());
}

void SubTerrain::fillVertices() {
    float* at = vertices_.get();
    const float* height = heights_.get();
    for (int row = 0; row < height_; ++row) {
        const auto r = static_cast<float>(row);
        for (int column = 0; column < width_; ++column) {
            const auto c = static_cast<float>(column);
            *at++ = (xvec_[0] * c + xvec_[1] * r) * scale_[0] + originX_;
            *at++ = (yvec_[0] * c + yvec_[1] * r) * scale_[1] + originY_;
            *at++ = *height++ * scale_[2] + originZ_;
        }
    }
}

void SubTerrain::fillIndices() {
    // Rows that run north need the other order for the triangles to face up.
    const auto width = static_cast<std::uint32_t>(width_);
    const std::uint32_t first = yvec_[1] > 0.0F ? width : 0;
    const std::uint32_t second = width - first;
    std::uint32_t* at = indices_.get();
    for (std::uint32_t row = 0; row + 1 < static_cast<std::uint32_t>(height_); ++row)
        for (std::uint32_t post = row * width; post < (row + 1) * width; ++post) {
            *at++ = post + first;
            *at++ = post + second;
        }
}

bool SubTerrain::setupBuffers() {
    fillVertices();
    if (!(xvec_[0] > 0.0F)) {
        printMessage("SubTerrain::SetupBuffers: x-direction vector points west");
        printMessage("\tThis logic needs to be added. Sorry :(");
        return false;
    }
    fillIndices();
    mesh_ = std::make_unique<TerrainMesh>();
    mesh_->upload(vertices_.get(), &normals_[0].x, colours_.get(), indices_.get(), width_, height_);
    return true;
}

bool SubTerrain::getElevation(float x, float y, float& z) const {
    z = 0.0F;
    if (!loaded_) {
        printMessage("SubTerrain::getElevation: not loaded");
        return false;
    }
    const auto [a1, a2] = xvec_;
    const auto [b1, b2] = yvec_;
    const auto [scaleX, scaleY, scaleZ] = scale_;
    const float det = b2 * (a1 * scaleX) * scaleY - a2 * scaleX * b1 * scaleY;
    // The second term takes x, not y: deliberate, it vanishes for grids that point north.
    const float column = (b2 * scaleY * (x - originX_) - scaleY * b1 * (x - originY_)) / det;
    const float row = (-a2 * scaleX * (x - originX_) + (y - originY_) * a1 * scaleX) / det;
    if (!(column >= 0.0F && column < static_cast<float>(width_) && row >= 0.0F && row < static_cast<float>(height_)))
        return false;
    // A float holds a large grid's far edge only nearly.
    const int c = std::min(static_cast<int>(column), width_ - 1);
    const int r = std::min(static_cast<int>(row), height_ - 1);
    z = heights_[static_cast<std::size_t>(r) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(c)];
    return true;
}

const SubTerrain::Bounds& SubTerrain::bounds() {
    recalculateBounds();
    return bounds_;
}

void SubTerrain::recalculateBounds() {
    if (!boundsDirty_)
        return;
    bool isFirst = true;
    for (const int column : {0, width_})
        for (const int row : {0, height_})
            for (const float height : {minZ_, maxZ_}) {
                const auto c = static_cast<float>(column);
                const auto r = static_cast<float>(row);
                const std::array<float, 3> corner = {
                    (xvec_[0] * c + xvec_[1] * r) * scale_[0] + originX_,
                    (yvec_[0] * c + yvec_[1] * r) * scale_[1] + originY_, height * scale_[2] + originZ_};
                for (std::size_t i = 0; i < corner.size(); ++i) {
                    bounds_.minimum[i] = isFirst ? corner[i] : std::min(bounds_.minimum[i], corner[i]);
                    bounds_.maximum[i] = isFirst ? corner[i] : std::max(bounds_.maximum[i], corner[i]);
                }
                isFirst = false;
            }
    boundsDirty_ = false;
}

bool SubTerrain::isVisible(float, float, float, float, float, float, float, float, float) {
    recalculateBounds();
    return true;
}

void SubTerrain::print() const {
    const CNumericLocale decimalPoint;
    std::puts("Subterrain:");
    std::printf("\tOrigin: (%f, %f)\n", double{originX_}, double{originY_});
    std::printf("\tx-vec: %f x (%f, %f)\n", double{scale_[0]}, double{xvec_[0]}, double{xvec_[1]});
    std::printf("\ty-vec: %f x (%f, %f)\n", double{scale_[1]}, double{yvec_[0]}, double{yvec_[1]});
    std::printf("\twidth (x-size): %d\n", width_);
    std::printf("\theight (y-size): %d\n", height_);
    std::printf("\tmin/max Z: %f x [%f, %f]\n", double{scale_[2]}, double{minZ_}, double{maxZ_});
}
