// One rectangular tile of terrain: its state and its elevations.
#include "subterrain.h"

#include <cstdio>

#include "cnumericlocale.h"
#include "messages.h"
#include "terrainmesh.h"
#include "tileloading.h"

using namespace sorvane;

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

bool SubTerrain::getElevation(float x, float y, float& z) const {
    z = 0.0F;
    if (!loaded_ || !hasHeights()) {
        printMessage("SubTerrain::getElevation: not loaded");
        return false;
    }
    const std::optional<std::size_t> post = placement_.postAt(x, y);
    if (post)
        z = content_->rasters->heights[*post];
    return post.has_value();
}

const SubTerrain::Bounds& SubTerrain::bounds() {
    recalculateBounds();
    return bounds_;
}

const SubTerrain::Bounds& SubTerrain::meshBounds() const {
    static const Bounds nothing;
    return content_->mesh == nullptr ? nothing : content_->mesh->bounds();
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
