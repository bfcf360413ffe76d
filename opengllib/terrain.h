// The terrain under an engagement: a set of raster tiles, with the files that they share.
#pragma once

#include <cmath>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lights.h"
#include "subterrain.h"
#include "terraincompanions.h"

namespace sorvane {
// Whether a line that loading a terrain prints tells how it goes, and not of a fault.
bool isTerrainNews(std::string_view line);
} // namespace sorvane

// Construction needs no GL context; drawing, loadAll, CleanUp and the destructor of a terrain whose tiles are loaded
// need the same one current.
class Terrain {
public:
    Terrain();
    ~Terrain();
    Terrain(const Terrain&) = delete;
    Terrain& operator=(const Terrain&) = delete;

    // Files that all tiles share, for load. One that is not set, or does not exist, is looked for beside the tiles
    // under the set's base name.
    void setAtmFile(const std::string& path) { shared_.companions.atmosphere = path; }
    void setVertShader(const std::string& path) { shared_.vertexShader = path; }
    void setFragShader(const std::string& path) { shared_.fragmentShader = path; }
    void setBandFilePath(const std::string& path) { shared_.companions.band = path; }
    void setAsterDbFilePath(const std::string& path) { shared_.asterDirectory = path; }
    void setCls2AsterFilePath(const std::string& path) { shared_.companions.classToAster = path; }
    void setCls2MatFilePath(const std::string& path) { shared_.companions.classToMaterial = path; }
    void setTempFilePath(const std::string& path) { shared_.companions.temperature = path; }
    // Where the shaders are that are not set; the data root's "openglshaders/" without.
    void setShaderDir(const std::string& directory) { shaderDirectory_ = directory; }

    // Takes the terrain of a trajectory: the described set when `topo` is a description (".xml") or one of its stem
    // stands beside it, else one tile from the header of the raster `topo`, the raster `rad` and their companions of
    // the same stem. Every tile is scaled and moved by an offset; `range` is what radiances are multiplied by for the
    // picture. `lowest` becomes the least height. False after a line on standard output when there are no tiles.
    bool Init(
        const std::string& topo, const std::string& rad, const std::string& shaderDir, float& lowest, float range,
        float scaleX, float scaleY, float scaleZ, float offsetX, float offsetY, float offsetZ);

    // Reads a description; `directory` is where its files are, or empty for the described one. Says on standard output
    // what will be lit. False when there are no tiles.
    bool load(const std::string& description, const std::string& directory, float radianceScale);

    // Loads every tile that is not loaded; whether all are then. Without it each loads when it is first drawn.
    bool loadAll();
    bool isLoaded() const;
    // Whether there are tiles, all loaded with their radiance maps.
    bool isWhole() const;

    // Draws the tiles shaded, or as a bare grey mesh.
    void Render(bool isShaded);
    void Render(const Lights& lights);
    // Draws shaded the tiles for which `isTileWanted` is true, and of them what lies in boxes for which `isPartWanted`
    // is. Asks for each that is loaded, after it tried to load it if not, unless `loads` is false.
    struct Choice {
        std::function<bool(const SubTerrain&)> isTileWanted;
        SubTerrain::Choice isPartWanted;
        bool loads = true;
        std::optional<float> brightness{}; // what radiances are multiplied by, in place of the tiles' own factors
    };
    void Render(const Lights& lights, const Choice& choice);

    // Of the first tile that has the point; 0 where none has.
    float GetElevation(float x, float y) const;

    // World box of all tiles.
    SubTerrain::Bounds BBox() const;

    // Sizes of the first tile's cells; 0 without tiles.
    float xCellSize() const { return tiles_.empty() ? 0.0F : tiles_.front()->getXsize(); }
    float yCellSize() const { return tiles_.empty() ? 0.0F : std::abs(tiles_.front()->getYsize()); }

    std::size_t tileCount() const { return tiles_.size(); }
    SubTerrain& tile(std::size_t index) { return *tiles_.at(index); }

    void print() const;

    // Back to a new terrain's state.
    void CleanUp();

private:
    // Until one is set it has a name that no file has.
    struct SharedFiles {
        sorvane::TerrainCompanions companions{"atmFile", "bandFP", "cls2asterFP", "cls2matFP", "tempFP"};
        std::string vertexShader = "vertShader";
        std::string fragmentShader = "fragShader";
        std::string asterDirectory;
    };

    bool initSet(const std::string& description, float range);
    void initTile(const std::string& topo, const std::string& rad, float range);
    SharedFiles filesBeside(const std::string& stem) const;
    void share(const SharedFiles& files, float radianceScale);

    std::vector<std::unique_ptr<SubTerrain>> tiles_;
    SharedFiles shared_;
    std::string shaderDirectory_;
};
