// What tiles of the same files at the same place have in common: their arrays and their OpenGL objects.
#include "tilecontent.h"

#include <GL/glew.h>

#include "atmfile.h"
#include "terrainmesh.h"
#include "terrainshader.h"

namespace sorvane {
TileContent::TileContent() = default;

TileContent::~TileContent() {
    if (texture != 0)
        glDeleteTextures(1, &texture);
}

ContentCache<TileContent>& TileContent::cache() {
    static ContentCache<TileContent> tiles;
    return tiles;
}
} // namespace sorvane
