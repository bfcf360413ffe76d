// Loads terrain for a view that must not wait for it.
#include "terrainloading.h"

#include <utility>

namespace sorvane {
SubTerrain* TerrainLoading::next(std::span<Terrain* const> shown) const {
    SubTerrain* first = nullptr;
    for (Terrain* const terrain : shown)
        for (std::size_t i = 0; i < terrain->tileCount(); ++i) {
            SubTerrain& tile = terrain->tile(i);
            if (tile.isLoading())
                return &tile;
            if (first == nullptr && !tile.isLoaded() && !tried_.contains(&tile))
                first = &tile;
        }
    return first;
}

TerrainProgress TerrainLoading::goOn(std::span<Terrain* const> shown, std::chrono::steady_clock::time_point until) {
    do {
        SubTerrain* const tile = next(shown);
        if (tile == nullptr) {
            tried_.clear();
            return {.hasLoaded = std::exchange(hasLoaded_, false)};
        }
        if (!tile->loadUntil(until))
            break;
        if (tile->isLoaded()) {
            hasLoaded_ = true;
            failed_.erase(tile);
        } else {
            tried_.insert(tile);
            failed_.insert(tile);
        }
    } while (std::chrono::steady_clock::now() < until);
    double done = 0.0;
    double all = 0.0;
    for (Terrain* const terrain : shown)
        for (std::size_t i = 0; i < terrain->tileCount(); ++i, all += 1.0)
            done += terrain->tile(i).loadedShare();
    return {.isThrough = false, .isRetry = failed_.contains(next(shown)), .share = all > 0.0 ? done / all : 0.0};
}
} // namespace sorvane
