// What tiles of the same files at the same place have in common: their arrays and their OpenGL objects.
#pragma once

#include <array>
#include <memory>

#include "contentcache.h"
#include "tilerasters.h"

class AtmFile;

namespace sorvane {
class TerrainMesh;
class TerrainShader;
class TileTexture;

// How a tile is lit.
struct TileLighting {
    bool isSunlit = false;
    bool isReflective = false;
    std::array<float, 3> solarDirection{0.0F, 0.0F, 1.0F};
    std::shared_ptr<const AtmFile> atmosphere; // null unless sunlit
};

// The destructor of what was loaded needs a context current that it was loaded in.
struct TileContent : SharedContent {
    TileContent();
    ~TileContent();
    TileContent(const TileContent&) = delete;
    TileContent& operator=(const TileContent&) = delete;

    // Those that are shared.
    static ContentCache<TileContent>& cache();

    // The heights stay; the rest is used up by the mesh.
    std::shared_ptr<TileRasters> rasters = std::make_shared<TileRasters>();
    std::unique_ptr<TerrainShader> shader;
    std::unique_ptr<TerrainMesh> mesh;
    std::unique_ptr<TileTexture> texture;
    TileLighting lighting;
};
} // namespace sorvane
