// What tiles of the same files at the same place have in common: their arrays and their OpenGL objects.
#include "tilecontent.h"

#include "atmfile.h"
#include "terrainmesh.h"
#include "terrainshader.h"
#include "tiletexture.h"

namespace sorvane {
TileContent::TileContent() = default;

TileContent::~TileContent() = default;

ContentCache<TileContent>& TileContent::cache() {
    static ContentCache<TileContent> tiles;
    return tiles;
}
} // namespace sorvane
