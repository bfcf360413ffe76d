// What the rasters of a tile hold, read without OpenGL and so on any thread.
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "loadnormfile.h"
#include "messages.h"
#include "radiancelevels.h"
#include "rastersize.h"
#include "terrainreflectance.h"
#include "tileplacement.h"

namespace sorvane {
struct TileRasters {
    RasterSize size{};
    std::unique_ptr<float[]> heights;         // stored ones times scale z
    std::unique_ptr<Vertex3[]> normals;       // null where all point up
    std::unique_ptr<unsigned char[]> classes; // null where nothing reflects
    ClassReflectances reflectances{};
};

// What is to be read for a tile.
struct TileRequest {
    std::string topography;
    std::string normals;
    std::string classes;
    std::string radiance;
    TilePlacement placement;
    bool hasNormals = false; // without, they point up
    bool hasClasses = false; // without, nothing reflects
    int largestTexture = 0;  // samples to a side
};

// Whether a file has the tile's size; false after a line. One without a header is its loader's to report.
bool hasTileSize(const std::string& path, const std::optional<RasterSize>& size, const TilePlacement& tile);

// Each is false, or empty, where the file does not load, has another size than the tile or takes too much memory.
bool readHeights(const TileRequest& request, TileRasters& rasters);
bool readNormals(const TileRequest& request, TileRasters& rasters);
bool readClasses(const TileRequest& request, TileRasters& rasters);
// Radiances that a texture can filter, and coarser levels of many: infinite ones are as bright as can be, and what is
// not a number is dark.
std::vector<RadianceLevel> readRadiances(const TileRequest& request);

// How a step went that was done ahead, and what it said, to be said where the step belongs.
struct StepAhead {
    bool hasSucceeded = false;
    std::vector<PrintedLine> lines;

    // Says it; whether the step has succeeded.
    bool tell() const;
};

// All rasters, read without a word. What follows a step that has failed is not read, but for the radiances, without
// which a tile is drawn.
struct TileReading {
    std::shared_ptr<TileRasters> rasters = std::make_shared<TileRasters>();
    std::vector<RadianceLevel> radiances;
    StepAhead arrays; // heights and normals
    StepAhead classes;
    StepAhead texture;
};
TileReading readTile(const TileRequest& request, const std::atomic<bool>& isUnwanted);
} // namespace sorvane
