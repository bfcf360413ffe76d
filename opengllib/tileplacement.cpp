// Where the posts of a terrain tile lie in the world, and which post lies at a place.
#include "tileplacement.h"

#include <algorithm>

namespace sorvane {
std::optional<std::size_t> TilePlacement::postAt(float x, float y) const {
    const auto [a1, a2] = xvec;
    const auto [b1, b2] = yvec;
    const auto [scaleX, scaleY, scaleZ] = scale;
    const auto [originX, originY, originZ] = origin;
    const float det = b2 * (a1 * scaleX) * scaleY - a2 * scaleX * b1 * scaleY;
    // The second term takes x, not y: deliberate, it vanishes for grids that point north.
    const float column = (b2 * scaleY * (x - originX) - scaleY * b1 * (x - originY)) / det;
    const float row = (-a2 * scaleX * (x - originX) + (y - originY) * a1 * scaleX) / det;
    if (!(column >= 0.0F && column < static_cast<float>(columns) && row >= 0.0F && row < static_cast<float>(rows)))
        return std::nullopt;
    // A float holds a large grid's far edge only nearly.
    const int c = std::min(static_cast<int>(column), columns - 1);
    const int r = std::min(static_cast<int>(row), rows - 1);
    return static_cast<std::size_t>(r) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(c);
}

TileBounds TilePlacement::bounds(float minZ, float maxZ) const {
    TileBounds box{position(0, 0, minZ), position(0, 0, minZ)};
    for (const int column : {0, columns})
        for (const int row : {0, rows})
            for (const float height : {minZ, maxZ}) {
                const std::array<float, 3> corner = position(column, row, height);
                for (std::size_t i = 0; i < corner.size(); ++i) {
                    box.minimum[i] = std::min(box.minimum[i], corner[i]);
                    box.maximum[i] = std::max(box.maximum[i], corner[i]);
                }
            }
    return box;
}
} // namespace sorvane
