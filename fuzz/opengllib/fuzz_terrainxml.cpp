// The XML description of a terrain.
#include "memoryfile.h"
#include "messages.h"
#include "subterrain.h"
#include "terrainxmlparser.h"

using namespace sorvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MessageCollection unprinted;
    static const MemoryFile file;
    file.write(data, size);
    TerrainDescription description;
    int count = 0;
    SubTerrain** const tiles = readTerrainXML(file.path(), "", count, description);
    for (int i = 0; i < count; ++i) {
        tiles[i]->bounds();
        tiles[i]->print();
    }
    cleanUpSubTerrainList(tiles, count);
    return 0;
}
