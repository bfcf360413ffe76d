// A tile's radiances and the coarser levels of them that take long to make. No OpenGL.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace sorvane {
// Row by row.
struct RadianceLevel {
    int columns = 0;
    int rows = 0;
    std::unique_ptr<float[]> radiances;

    std::size_t count() const { return static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows); }
};

// How many radiances are copied or halved at once without anybody noticing.
inline constexpr int kRadiancesOfPiece = 1 << 20;

// The given level, as it is, and halves of it, sides rounded down, until one has at most kRadiancesOfPiece. A texel is
// what linear filtering of the finer level gives at its centre, as OpenGL would have it: the mean of four where a side
// is even.
std::vector<RadianceLevel> radianceLevels(RadianceLevel finest);
} // namespace sorvane
