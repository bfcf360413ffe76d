// Where a ray meets the mesh of a tile of terrain.
#pragma once

#include <cstddef>
#include <optional>
#include <span>

#include "tileplacement.h"
#include "vec3.h"

namespace sorvane {
// A ray in the terrain's coordinates.
struct GroundRay {
    Vec3d eye;
    Vec3d way;
    double farthest = 0.0; // in lengths of `way`
};

struct GroundHit {
    double depth = 0.0;   // in lengths of `way`
    std::size_t post = 0; // of the cell's first column and row, row by row
};

// The mesh of a tile.
struct TileGround {
    const TilePlacement& placement;
    std::span<const float> heights; // of the posts, row by row
    TileBounds bounds;              // of the mesh
};

// The nearest place up to `farthest` where a ray comes from above through one of the triangles that are drawn; from
// below nothing is seen. A height that is not a number is a hole.
std::optional<GroundHit> meetGround(const TileGround& tile, const GroundRay& ray);
} // namespace sorvane
