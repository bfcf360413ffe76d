// Where the posts of a terrain tile lie in the world, and which post lies at a place.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

namespace sorvane {
// A box along the axes of the world.
struct TileBounds {
    std::array<float, 3> minimum{};
    std::array<float, 3> maximum{};
};

// Post (column c, row r) of stored height h lies at
//     x = (a1 · c + a2 · r) · scale x + a0     y = (b1 · c + b2 · r) · scale y + b0     z = h · scale z + z0
struct TilePlacement {
    std::array<float, 3> origin{};         // a0, b0, z0
    std::array<float, 2> xvec{1.0F, 0.0F}; // a1, a2
    std::array<float, 2> yvec{0.0F, 1.0F}; // b1, b2
    std::array<float, 3> scale{1.0F, 1.0F, 1.0F};
    int columns = 0;
    int rows = 0;

    std::array<float, 3> position(int column, int row, float height) const {
        const auto c = static_cast<float>(column);
        const auto r = static_cast<float>(row);
        return {
            (xvec[0] * c + xvec[1] * r) * scale[0] + origin[0], (yvec[0] * c + yvec[1] * r) * scale[1] + origin[1],
            height * scale[2] + origin[2]};
    }

    // The number of the post at or before a point, row by row; nothing outside.
    std::optional<std::size_t> postAt(float x, float y) const;

    // Of heights between the two; the corners count one column and one row beyond the last.
    TileBounds bounds(float minZ, float maxZ) const;
};
} // namespace sorvane
