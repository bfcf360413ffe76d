// What tiles of the same files at the same place have in common: their arrays and their OpenGL objects.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "contentcache.h"
#include "loadnormfile.h"
#include "rastersize.h"
#include "tileplacement.h"

class AtmFile;

namespace sorvane {
class TerrainMesh;
class TerrainShader;

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

    RasterSize arraysSize{}; // posts that the arrays have
    std::unique_ptr<float[]> heights;
    std::unique_ptr<float[]> colours;
    std::unique_ptr<float[]> vertices;
    std::unique_ptr<Vertex3[]> normals;
    std::unique_ptr<std::uint32_t[]> indices;
    std::unique_ptr<TerrainShader> shader;
    std::unique_ptr<TerrainMesh> mesh;
    unsigned texture = 0;
    TileBounds bounds{}; // of the mesh, or a little more
    TileLighting lighting;
};
} // namespace sorvane
