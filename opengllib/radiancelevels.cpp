// A tile's radiances and the coarser levels of them that take long to make. No OpenGL.
#include "radiancelevels.h"

#include <algorithm>
#include <utility>

namespace sorvane {
namespace {
// The two texels of a side around a centre of the coarser one's, and the second one's share.
struct Neighbours {
    std::size_t first = 0;
    std::size_t second = 0;
    float share = 0.0F;
};

std::vector<Neighbours> neighboursAlong(int finer, int coarser) {
    std::vector<Neighbours> found(static_cast<std::size_t>(coarser));
    const double step = static_cast<double>(finer) / coarser;
    for (std::size_t i = 0; i < found.size(); ++i) {
        const double centre = (static_cast<double>(i) + 0.5) * step - 0.5;
        const auto first = static_cast<std::size_t>(std::max(centre, 0.0));
        const std::size_t second = std::min(first + 1, static_cast<std::size_t>(finer) - 1);
        found[i] = {first, second, static_cast<float>(std::max(centre, 0.0) - static_cast<double>(first))};
    }
    return found;
}

RadianceLevel halved(const RadianceLevel& finer) {
    RadianceLevel level{std::max(finer.columns / 2, 1), std::max(finer.rows / 2, 1), nullptr};
    level.radiances = std::make_unique_for_overwrite<float[]>(level.count());
    const std::vector<Neighbours> across = neighboursAlong(finer.columns, level.columns);
    float* texel = level.radiances.get();
    for (const Neighbours& down : neighboursAlong(finer.rows, level.rows)) {
        const auto columns = static_cast<std::size_t>(finer.columns);
        const float* const upper = finer.radiances.get() + down.first * columns;
        const float* const lower = finer.radiances.get() + down.second * columns;
        for (const auto& [first, second, share] : across) {
            const float above = upper[first] + share * (upper[second] - upper[first]);
            const float below = lower[first] + share * (lower[second] - lower[first]);
            *texel++ = above + down.share * (below - above);
        }
    }
    return level;
}
} // namespace

std::vector<RadianceLevel> radianceLevels(RadianceLevel finest) {
    std::vector<RadianceLevel> levels;
    levels.push_back(std::move(finest));
    while (levels.back().count() > kRadiancesOfPiece)
        levels.push_back(halved(levels.back()));
    return levels;
}
} // namespace sorvane
