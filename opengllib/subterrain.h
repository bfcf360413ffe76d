// One rectangular tile of terrain: a grid of elevation posts, drawn as a shaded mesh under the tile's radiance map.
#pragma once

#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "lights.h"
#include "terrainreflectance.h"
#include "tilecontent.h"
#include "tileplacement.h"

namespace sorvane {
struct TileLoading;
} // namespace sorvane

// Its posts lie where its TilePlacement says. Their stored heights were multiplied by scale z once while loading, which
// is thus in z twice and in elevations once: deliberate, existing sets rely on it.
//
// Loaded from the same files to the same place, tiles share their arrays and OpenGL objects as long as one of them is
// there.
//
// Construction needs no GL context; everything that loads or draws, and the destructor of a loaded tile, needs the same
// one current, or one that shares with it.
class SubTerrain {
public:
    SubTerrain();
    ~SubTerrain();
    SubTerrain(const SubTerrain&) = delete;
    SubTerrain& operator=(const SubTerrain&) = delete;

    // Placement. World position of post (0, 0).
    void setOriginX(float a0);
    void setOriginY(float b0);
    // World x, and world y, per column and per row. Only grids whose columns run east (a1 > 0) load.
    void setXvec(float a1, float a2);
    void setYvec(float b1, float b2);
    void setWidth(int postsPerRow);
    void setHeight(int rows);
    void setMinZ(float z);
    void setMaxZ(float z);
    // These do not make the bounds new: deliberate, they are set before the tile is first asked for them.
    void setOriginZ(float z) { placement_.origin[2] = z; }
    void setScale(float x, float y, float z) { placement_.scale = {x, y, z}; }
    // What radiances are multiplied by for the picture.
    void setRadScale(float scale) { radScale_ = scale; }

    float getOriginX() const { return placement_.origin[0]; }
    float getOriginY() const { return placement_.origin[1]; }
    float getOriginZ() const { return placement_.origin[2]; }
    int getWidth() const { return placement_.columns; }
    int getHeight() const { return placement_.rows; }
    float getMinZ() const { return minZ_; }
    float getMaxZ() const { return maxZ_; }
    void getScale(float& x, float& y, float& z) const;
    void getRadScale(float& scale) const { scale = radScale_; }
    // Sizes of a cell along world x and y.
    float getXsize() const { return placement_.xvec[0] * placement_.scale[0]; }
    float getYsize() const { return placement_.yvec[1] * placement_.scale[1]; }

    // Files. Until one is set it has a name that no file has.
    void setTopoFilePath(const std::string& path) { paths_.topography = path; }
    void setNormFilePath(const std::string& path) { paths_.normals = path; }
    void setClassFilePath(const std::string& path) { paths_.classes = path; }
    void setRadFilePath(const std::string& path) { paths_.radiance = path; }
    void setFragShader(const std::string& path) { paths_.fragmentShader = path; }
    void setVertShader(const std::string& path) { paths_.vertexShader = path; }
    void setAtmFile(const std::string& path) { paths_.atmosphere = path; }
    void setTempFilePath(const std::string& path) { paths_.temperature = path; }
    void setCls2MatFilePath(const std::string& path) { paths_.classToMaterial = path; }
    void setCls2AsterFilePath(const std::string& path) { paths_.classToAster = path; }
    void setAsterDbFilePath(const std::string& path) { paths_.asterDirectory = path; }
    void setBandFilePath(const std::string& path) { paths_.band = path; }
    const std::string& getTopoFilePath() const { return paths_.topography; }
    const std::string& getNormFilePath() const { return paths_.normals; }
    const std::string& getClassFilePath() const { return paths_.classes; }
    const std::string& getRadFilePath() const { return paths_.radiance; }
    const std::string& getAtmFile() const { return paths_.atmosphere; }
    const std::string& getTempFilePath() const { return paths_.temperature; }
    const std::string& getCls2MatFilePath() const { return paths_.classToMaterial; }
    const std::string& getBandFilePath() const { return paths_.band; }
    const std::string& getAsterDbFilePath() const { return paths_.asterDirectory; }
    const std::string& getCls2AsterFilePath() const { return paths_.classToAster; }

    sorvane::ReflectanceFiles reflectanceFiles() const;

    // Reads the files and fills the buffers. False after a line on standard output; nothing of the try is then kept.
    bool load();
    bool isLoaded() const { return loaded_; }
    // Loaded with its radiance map, without which it is still drawn.
    bool isWhole() const { return loaded_ && content_->texture != nullptr; }

    // The same for who must not wait: goes on with loading, which it begins if need be, until `until` or until there is
    // nothing to do but wait for the files, which are read on a thread of their own. True when it is through, loaded or
    // not. A piece takes some milliseconds; what is said is said in the same order. Between the calls the tile may be
    // loaded as above, drawn, which draws nothing, or ended.
    bool loadUntil(std::chrono::steady_clock::time_point until);
    bool isLoading() const { return loading_ != nullptr; }
    // How much of the loading is done, from 0, as long as files are being read, to 1.
    double loadedShare() const;

    bool isSunlit() const { return lighting_.isSunlit; }
    bool isReflective() const { return lighting_.isReflective; }
    const std::array<float, 3>& solarDirection() const { return lighting_.solarDirection; }

    // The steps of load, in its order, without sharing: a tile that shares what it has lets go of it. Each is false
    // where a file's size is not the tile's, after a line, or where the arrays of the steps before are missing or of
    // another size. setupBuffers uses normals and classes up.
    bool allocateArrays();
    bool loadNormals();
    bool loadReflectances();
    bool loadShader();
    bool loadTextures();
    bool setupBuffers();
    void unallocateArrays();

    // The height of the post at or before a point, scaled once and without originZ; false, and 0, outside or not
    // loaded.
    bool getElevation(float x, float y, float& z) const;

    const sorvane::TilePlacement& placement() const { return placement_; }

    // World box between minZ and maxZ.
    using Bounds = sorvane::TileBounds;
    const Bounds& bounds();
    void recalculateBounds();
    // Box of what is drawn when the tile is loaded; infinite when some of it is nowhere.
    const Bounds& meshBounds() const;
    // What is drawn when the tile is loaded.
    const sorvane::TileContent* content() const { return content_.get(); }
    // Whether the tile is in sight. Always true so far.
    bool isVisible(float, float, float, float, float, float, float, float, float);

    // Which passes render draws; the first is drawn again unless it is skipped each time.
    void setSkipFirstPass(bool skip) { skipFirstPass_ = skip; }
    void setDrawSecondPass(bool draw) { drawSecondPass_ = draw; }
    // The first pass unless skipped, then the shaded one if asked for, for which a tile that is not loaded loads.
    void render(const Lights& lights);
    // The same; of the shaded one the parts within boxes for which `isWanted` is true, their radiances multiplied by
    // `brightness` in place of the tile's own factor.
    using Choice = std::function<bool(const Bounds&)>;
    void render(const Lights& lights, const Choice& isWanted, const std::optional<float>& brightness = {});
    // The bare mesh in grey. Draws nothing when the tile is not loaded.
    void renderFirstPass() const;

    void print() const;

    // For tests: null without one.
    const sorvane::TerrainMesh* mesh() const { return content_->mesh.get(); }

private:
    struct Paths {
        std::string topography = "subTerrain::topoFP";
        std::string normals = "subTerrain::normFP";
        std::string classes = "subTerrain::clsFP";
        std::string radiance = "subTerrain::radFP";
        std::string fragmentShader = "subTerrain::fragFP";
        std::string vertexShader = "subTerrain::vertFP";
        std::string atmosphere = "subTerrain::atmFP";
        std::string temperature = "subTerrain::termFP";
        std::string classToMaterial;
        std::string classToAster;
        std::string asterDirectory;
        std::string band;
    };

    bool hasRequiredFiles() const;
    bool hasHeights() const;
    bool hasArrays() const;
    bool hasSize(const std::string& path, const std::optional<sorvane::RasterSize>& size) const;
    bool chooseLighting();
    bool needsNormals() const { return lighting_.isSunlit || lighting_.isReflective; }
    sorvane::ReflectanceRoute route() const;
    sorvane::TileRequest request() const;
    sorvane::ContentKey key() const;
    bool takeShared(const sorvane::ContentKey& key);
    bool beginLoading(bool isBeside);
    enum class Piece { Done, Waiting, Failed, Through };
    Piece loadPiece(bool mayWait);
    Piece loadTexturePiece();
    Piece loadMeshPiece(bool mayWait);
    void finishLoading(Piece last);
    bool takeReflectances();
    bool beginMesh();
    void endMesh();
    sorvane::TileContent& ownContent();
    void renderSecondPass(const Lights& lights, const Choice& isWanted, const std::optional<float>& brightness) const;

    bool loaded_ = false;
    sorvane::TilePlacement placement_;
    float minZ_ = 0.0F;
    float maxZ_ = 0.0F;
    Bounds bounds_;
    float radScale_ = 1.0F;
    bool boundsDirty_ = true;
    sorvane::TileLighting lighting_;
    std::shared_ptr<sorvane::TileContent> content_ = std::make_shared<sorvane::TileContent>();
    std::unique_ptr<sorvane::TileLoading> loading_;
    Paths paths_;
    bool skipFirstPass_ = false;
    bool drawSecondPass_ = false;
};
