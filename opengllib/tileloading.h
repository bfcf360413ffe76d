// How far the loading of a tile has come.
#pragma once

#include <utility>
#include <vector>

#include "background.h"
#include "contentkey.h"
#include "messages.h"
#include "terrainblocks.h"
#include "tilerasters.h"

namespace sorvane {
struct TileLoading {
    enum class Stage { Rasters, Shader, Texture, Mesh };

    TileLoading(ContentKey keyBefore, bool beside) : key(std::move(keyBefore)), isBeside(beside) {}

    ContentKey key; // from before the files were read
    bool isBeside;  // files are read and arrays made on other threads
    std::vector<PrintedLine> lines;
    Stage stage = Stage::Rasters;
    Background<TileReading> reader;
    TileReading reading;
    Background<std::vector<TerrainBlock>> maker;
};
} // namespace sorvane
