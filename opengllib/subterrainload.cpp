// One rectangular tile of terrain: its loading.
#include <algorithm>
#include <memory>
#include <utility>

#include <GL/glew.h>

#include "atmfile.h"
#include "messages.h"
#include "subterrain.h"
#include "terrainfileexists.h"
#include "terrainmesh.h"
#include "terrainshader.h"
#include "tileloading.h"
#include "tiletexture.h"

using namespace sorvane;

namespace {
constexpr std::size_t kBlocksOfPiece = 16; // up to 10 MB
} // namespace

bool SubTerrain::hasHeights() const {
    const TileRasters& rasters = *content_->rasters;
    return rasters.heights != nullptr && rasters.size == RasterSize{placement_.columns, placement_.rows};
}

bool SubTerrain::hasArrays() const {
    return hasHeights() && (content_->rasters->normals != nullptr || !needsNormals());
}

bool SubTerrain::hasSize(const std::string& path, const std::optional<RasterSize>& size) const {
    return hasTileSize(path, size, placement_);
}

bool SubTerrain::hasRequiredFiles() const {
    const struct {
        const std::string& path;
        const char* message;
    } files[] = {
        {paths_.topography, "SubTerrain::load: Topo File is missing"},
        {paths_.radiance, "SubTerrain::load: Radiance File is missing"},
        {paths_.vertexShader, "SubTerrain::load: vert shader file is missing"},
        {paths_.fragmentShader, "SubTerrain::load: frag shader file is missing"},
    };
    for (const auto& [path, message] : files)
        if (!FileExists(path)) {
            printMessage("%s", message);
            return false;
        }
    return hasSize(paths_.topography, readTopographySize(paths_.topography)) &&
           hasSize(paths_.radiance, readRasterSize(paths_.radiance));
}

bool SubTerrain::chooseLighting() {
    const auto isUsable = [this](const std::string& path) {
        return FileExists(path) && hasSize(path, readRasterSize(path));
    };
    lighting_ = {};
    lighting_.isSunlit = lighting_.isReflective = isUsable(paths_.classes);
    if (!FileExists(paths_.atmosphere))
        lighting_.isSunlit = false;
    if (!isUsable(paths_.normals))
        lighting_.isSunlit = lighting_.isReflective = false;
    if (!lighting_.isSunlit)
        return true;
    const auto atmosphere = std::make_shared<AtmFile>();
    if (!atmosphere->Load(paths_.atmosphere)) {
        printMessage("SubTerrain::load: could not load atm file");
        return false;
    }
    lighting_.atmosphere = atmosphere;
    const Vector<float> sun = atmosphere->SolarDirWorld();
    lighting_.solarDirection = {sun.ElementAt(0), sun.ElementAt(1), sun.ElementAt(2)};
    return true;
}

ReflectanceFiles SubTerrain::reflectanceFiles() const {
    return {paths_.classes, paths_.classToAster,    paths_.asterDirectory,
            paths_.band,    paths_.classToMaterial, paths_.temperature};
}

ReflectanceRoute SubTerrain::route() const {
    return lighting_.isReflective ? reflectanceRoute(reflectanceFiles()) : ReflectanceRoute::None;
}

TileRequest SubTerrain::request() const {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    return {
        paths_.topography,
        paths_.normals,
        paths_.classes,
        paths_.radiance,
        placement_,
        needsNormals(),
        route() != ReflectanceRoute::None,
        largest,
    };
}

ContentKey SubTerrain::key() const {
    ContentKey key;
    for (const std::string& path :
         {paths_.topography, paths_.normals, paths_.classes, paths_.radiance, paths_.fragmentShader,
          paths_.vertexShader, paths_.atmosphere, paths_.temperature, paths_.classToMaterial, paths_.classToAster,
          paths_.asterDirectory, paths_.band})
        key.addFile(path);
    const auto& [origin, xvec, yvec, scale, columns, rows] = placement_;
    key.addValues(origin, xvec, yvec, scale, columns, rows, radScale_);
    return key;
}

bool SubTerrain::takeShared(const ContentKey& key) {
    const std::shared_ptr<TileContent> shared = TileContent::cache().find(key);
    if (shared == nullptr)
        return false;
    content_ = shared;
    lighting_ = shared->lighting;
    loaded_ = true;
    return true;
}

bool SubTerrain::load() {
    if (loading_ == nullptr && !beginLoading(false))
        return loaded_;
    while (isLoading())
        finishLoading(loadPiece(true));
    return loaded_;
}

bool SubTerrain::loadUntil(std::chrono::steady_clock::time_point until) {
    if (loading_ == nullptr && (loaded_ || !beginLoading(true)))
        return true;
    Piece last = Piece::Done;
    do {
        last = loadPiece(false);
        finishLoading(last);
    } while (last == Piece::Done && std::chrono::steady_clock::now() < until);
    return !isLoading();
}

double SubTerrain::loadedShare() const {
    if (loading_ == nullptr)
        return loaded_ ? 1.0 : 0.0;
    if (content_->texture == nullptr && content_->mesh == nullptr)
        return 0.0;
    std::size_t pieces = BlockGrid(content_->rasters->size).count();
    std::size_t done = content_->mesh == nullptr ? 0 : content_->mesh->addedCount();
    if (content_->texture != nullptr) {
        pieces += content_->texture->pieceCount();
        done += content_->texture->addedCount();
    }
    return pieces == 0 ? 1.0 : static_cast<double>(done) / static_cast<double>(pieces);
}

// Whether there is something to go on with; without, it is loaded or has failed.
bool SubTerrain::beginLoading(bool isBeside) {
    ContentKey made = key();
    if (takeShared(made))
        return false;
    MessageRecord record;
    printMessage("SubTerrain::load");
    loaded_ = false;
    if (!hasRequiredFiles() || !chooseLighting())
        return false;
    unallocateArrays();
    loading_ = std::make_unique<TileLoading>(std::move(made), isBeside);
    loading_->lines = record.take();
    loading_->reader.start(
        [request = request()](const std::atomic<bool>& isUnwanted) { return readTile(request, isUnwanted); }, isBeside);
    return true;
}

SubTerrain::Piece SubTerrain::loadPiece(bool mayWait) {
    MessageRecord record;
    const auto take = [&] {
        switch (loading_->stage) {
        case TileLoading::Stage::Rasters: {
            if (!mayWait && !loading_->reader.isReady())
                return Piece::Waiting;
            std::optional<TileReading> reading = loading_->reader.take();
            if (!reading || !reading->arrays.tell())
                return Piece::Failed;
            loading_->reading = *std::move(reading);
            content_->rasters = loading_->reading.rasters;
            loading_->stage = TileLoading::Stage::Shader;
            return loading_->reading.classes.tell() && takeReflectances() ? Piece::Done : Piece::Failed;
        }
        case TileLoading::Stage::Shader:
            loading_->stage = TileLoading::Stage::Texture;
            return loadShader() ? Piece::Done : Piece::Failed;
        case TileLoading::Stage::Texture:
            return loadTexturePiece();
        case TileLoading::Stage::Mesh:
            break;
        }
        return loadMeshPiece(mayWait);
    };
    const Piece piece = take();
    for (PrintedLine& line : record.take())
        loading_->lines.push_back(std::move(line));
    return piece;
}

// A tile without its radiance map is still drawn.
SubTerrain::Piece SubTerrain::loadTexturePiece() {
    std::unique_ptr<TileTexture>& texture = content_->texture;
    if (texture == nullptr && loading_->reading.texture.tell())
        texture = std::make_unique<TileTexture>(loading_->reading.radiances);
    else if (texture != nullptr)
        texture->addPiece(loading_->reading.radiances);
    if (texture == nullptr || texture->isWhole()) {
        loading_->reading.radiances.clear();
        loading_->reading.radiances.shrink_to_fit();
        loading_->stage = TileLoading::Stage::Mesh;
    }
    return Piece::Done;
}

SubTerrain::Piece SubTerrain::loadMeshPiece(bool mayWait) {
    if (content_->mesh == nullptr && !beginMesh())
        return Piece::Failed;
    TerrainMesh& mesh = *content_->mesh;
    auto& maker = loading_->maker;
    const auto make = [&](std::size_t first) {
        maker.start(
            [rasters = content_->rasters, placement = placement_, layout = mesh.layout(), first](
                const std::atomic<bool>&) { return makeBlocks(placement, *rasters, layout, first, kBlocksOfPiece); },
            loading_->isBeside);
    };
    if (!mesh.isWhole()) {
        if (!maker.isStarted())
            make(0);
        if (!mayWait && !maker.isReady())
            return Piece::Waiting;
        const std::optional<std::vector<TerrainBlock>> blocks = maker.take();
        if (!blocks)
            return Piece::Failed;
        if (mesh.addedCount() + blocks->size() < mesh.blockCount())
            make(mesh.addedCount() + blocks->size());
        mesh.add(*blocks);
    }
    if (!mesh.isWhole())
        return Piece::Done;
    endMesh();
    return Piece::Through;
}

void SubTerrain::finishLoading(Piece last) {
    if (last == Piece::Failed) {
        unallocateArrays();
        printMessage("SubTerrain::load: could not allocate arrays");
    } else if (last == Piece::Through) {
        const std::unique_ptr<TileLoading> done = std::move(loading_);
        loaded_ = true;
        content_->lighting = lighting_;
        TileContent::cache().add(content_, std::move(done->key), std::move(done->lines));
    }
}

// What the next step may change.
TileContent& SubTerrain::ownContent() {
    if (content_.use_count() > 1)
        content_ = std::make_shared<TileContent>();
    else
        TileContent::cache().remove(content_);
    return *content_;
}

void SubTerrain::unallocateArrays() {
    loaded_ = false;
    loading_.reset();
    content_ = std::make_shared<TileContent>();
}

bool SubTerrain::allocateArrays() {
    unallocateArrays();
    if (readHeights(request(), *content_->rasters) && loadNormals())
        return true;
    unallocateArrays();
    return false;
}

bool SubTerrain::loadNormals() {
    return readNormals(request(), *ownContent().rasters);
}

bool SubTerrain::loadReflectances() {
    return hasHeights() && readClasses(request(), *ownContent().rasters) && hasHeights() && takeReflectances();
}

bool SubTerrain::takeReflectances() {
    TileRasters& rasters = *content_->rasters;
    const ReflectanceRoute taken = route();
    if (taken == ReflectanceRoute::None)
        lighting_.isReflective = false;
    const std::size_t posts =
        static_cast<std::size_t>(rasters.size.columns) * static_cast<std::size_t>(rasters.size.rows);
    return rasters.classes == nullptr ||
           readReflectances(reflectanceFiles(), taken, rasters.classes.get(), posts, rasters.reflectances);
}

bool SubTerrain::loadTextures() {
    const std::vector<RadianceLevel> radiances = readRadiances(request());
    if (radiances.empty())
        return false;
    TileContent& content = ownContent();
    content.texture = std::make_unique<TileTexture>(radiances);
    while (!content.texture->isWhole())
        content.texture->addPiece(radiances);
    return true;
}

bool SubTerrain::setupBuffers() {
    if (!hasArrays())
        return false;
    TileContent& content = ownContent();
    if (!hasArrays() || !beginMesh())
        return false;
    while (!content.mesh->isWhole())
        content.mesh->add(makeBlocks(
            placement_, *content.rasters, content.mesh->layout(), content.mesh->addedCount(), kBlocksOfPiece));
    endMesh();
    return true;
}

bool SubTerrain::beginMesh() {
    if (!(placement_.xvec[0] > 0.0F)) {
        printMessage("SubTerrain::SetupBuffers: x-direction vector points west");
        printMessage("\tThis logic needs to be added. Sorry :(");
        return false;
    }
    const TileRasters& rasters = *content_->rasters;
    const VertexLayout layout{rasters.normals != nullptr, rasters.classes != nullptr};
    content_->mesh = std::make_unique<TerrainMesh>(rasters.size, layout, placement_.yvec[1] > 0.0F);
    return true;
}

void SubTerrain::endMesh() {
    content_->rasters->normals.reset();
    content_->rasters->classes.reset();
}
