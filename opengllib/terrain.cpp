// The terrain under an engagement.
#include "terrain.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "bkgheader.h"
#include "cls2asterfile.h"
#include "dataroot.h"
#include "filechecks.h"
#include "ghead.h"
#include "loadclsfile.h"
#include "loadtopofile.h"
#include "messages.h"
#include "terrainreflectance.h"
#include "terrainxmlparser.h"

namespace {
const std::string kDescriptionExtension = "xml";

std::string inDirectory(const std::string& directory, const std::string& name) {
    return directory.empty() || directory.ends_with('/') ? directory + name : directory + "/" + name;
}

std::string withoutExtension(const std::string& path) {
    return std::filesystem::path(path).replace_extension().string();
}

std::string firstExisting(const std::string& configured, const std::string& companion) {
    return FileExists(configured) || !FileExists(companion) ? configured : companion;
}

// Whether light reflections can be drawn.
bool reportRoutes(const ReflectanceFiles& files) {
    const bool isComplete = reflectanceRoute(files) != ReflectanceRoute::None;
    if (!isComplete && hasReflectanceFile(files))
        printMessage("Terrain::load: missing some class to material data");
    return isComplete;
}

// Size, cells and heights of a tile from the header of its topography.
void placeFromHeader(const std::string& topo, SubTerrain& tile) {
    BKG_header bkg{};
    GHead torvale{};
    if (checkExtension(topo, FTOP_EXT)) {
        ReadHeaderOnly(topo, bkg);
    } else {
        ReadHeaderOnly(topo, torvale);
        bkg.sizeX = torvale.ncols;
        bkg.sizeY = torvale.nrows;
        bkg.xStepSize = torvale.xCellSize;
        bkg.yStepSize = torvale.yCellSize;
        bkg.databaseMinimum = torvale.MinVals[0];
        bkg.databaseMaximum = torvale.MaxVals[0];
    }
    tile.setWidth(bkg.sizeX);
    tile.setHeight(bkg.sizeY);
    tile.setXvec(bkg.xStepSize, 0.0F);
    tile.setYvec(0.0F, bkg.yStepSize);
    tile.setMinZ(bkg.databaseMinimum);
    tile.setMaxZ(bkg.databaseMaximum);
}
} // namespace

Terrain::Terrain() = default;
Terrain::~Terrain() = default;

bool Terrain::Init(
    const std::string& topo, const std::string& rad, const std::string& shaderDir, float& lowest, float range,
    float scaleX, float scaleY, float scaleZ, float offsetX, float offsetY, float offsetZ) {
    if (!FileExists(topo)) {
        printMessage("Terrain::Init: Cant find old topo file");
        return false;
    }
    if (!FileExists(rad)) {
        printMessage("Terrain::Init: Cant find rad map");
        return false;
    }
    setShaderDir(shaderDir);
    const std::string description =
        checkExtension(topo, kDescriptionExtension) ? topo : withoutExtension(topo) + "." + kDescriptionExtension;
    if (!FileExists(description))
        initTile(topo, rad, range);
    else if (!initSet(description, range))
        return false;
    for (const auto& tile : tiles_) {
        tile->setScale(scaleX, scaleY, scaleZ);
        tile->setOriginX(tile->getOriginX() + offsetX);
        tile->setOriginY(tile->getOriginY() + offsetY);
        tile->setOriginZ(tile->getOriginZ() + offsetZ);
        lowest = tile == tiles_.front() ? tile->getMinZ() : std::min(lowest, tile->getMinZ());
    }
    return true;
}

bool Terrain::initSet(const std::string& description, float range) {
    const std::string directory = std::filesystem::path(description).parent_path().string();
    return load(description, directory.empty() ? "." : directory, range);
}

void Terrain::initTile(const std::string& topo, const std::string& rad, float range) {
    tiles_.clear();
    auto& tile = *tiles_.emplace_back(std::make_unique<SubTerrain>());
    const std::string stem = withoutExtension(topo);
    tile.setTopoFilePath(topo);
    tile.setRadFilePath(rad);
    tile.setNormFilePath(stem + "." + NORM_EXT);
    tile.setClassFilePath(stem + "." + CLS_EXT);
    placeFromHeader(topo, tile);
    share(filesBeside(stem), range);
}

bool Terrain::load(const std::string& description, const std::string& directory, float radianceScale) {
    tiles_.clear();
    TerrainDescription described;
    int count = 0;
    SubTerrain** const list = readTerrainXML(description, directory, count, described);
    for (int i = 0; i < count; ++i)
        tiles_.emplace_back(std::exchange(list[i], nullptr));
    cleanUpSubTerrainList(list, count);
    if (tiles_.empty())
        return false;

    SharedFiles files = filesBeside(inDirectory(directory.empty() ? described.datadir : directory, described.base));
    if (files.asterDirectory.empty())
        files.asterDirectory = described.asterdb;
    printMessage("terrain::load: dynamic sunlight reflections: %s", FileExists(files.atmosphere) ? "ON" : "OFF");
    const bool isReflective = reportRoutes(
        {"", files.classToAster, files.asterDirectory, files.band, files.classToMaterial, files.temperature});
    printMessage("terrain::load: dynamic light reflections: %s", isReflective ? "ON" : "OFF");
    share(files, radianceScale);
    return true;
}

Terrain::SharedFiles Terrain::filesBeside(const std::string& stem) const {
    const std::string shaders = shaderDirectory_.empty() ? dataPath("openglshaders/") : shaderDirectory_;
    SharedFiles files = shared_;
    files.atmosphere = firstExisting(shared_.atmosphere, stem + ".atm");
    files.vertexShader = firstExisting(shared_.vertexShader, inDirectory(shaders, "TerrainRefl.vert"));
    files.fragmentShader = firstExisting(shared_.fragmentShader, inDirectory(shaders, "TerrainRefl.frag"));
    files.band = firstExisting(shared_.band, stem + ".band");
    files.classToAster = firstExisting(shared_.classToAster, stem + "." + CLS2ASTER_EXT);
    files.classToMaterial = firstExisting(shared_.classToMaterial, stem + ".cls2mat");
    files.temperature = firstExisting(shared_.temperature, stem + ".temp");
    return files;
}

void Terrain::share(const SharedFiles& files, float radianceScale) {
    using Setter = void (SubTerrain::*)(const std::string&);
    const std::pair<const std::string&, Setter> settings[] = {
        {files.atmosphere, &SubTerrain::setAtmFile},
        {files.vertexShader, &SubTerrain::setVertShader},
        {files.fragmentShader, &SubTerrain::setFragShader},
        {files.band, &SubTerrain::setBandFilePath},
        {files.classToAster, &SubTerrain::setCls2AsterFilePath},
        {files.classToMaterial, &SubTerrain::setCls2MatFilePath},
        {files.temperature, &SubTerrain::setTempFilePath},
    };
    for (const auto& [path, set] : settings)
        if (FileExists(path))
            for (const auto& tile : tiles_)
                (tile.get()->*set)(path);
    for (const auto& tile : tiles_) {
        if (!files.asterDirectory.empty())
            tile->setAsterDbFilePath(files.asterDirectory);
        tile->setRadScale(radianceScale);
    }
}

bool Terrain::loadAll() {
    bool areLoaded = true;
    for (const auto& tile : tiles_)
        areLoaded = (tile->isLoaded() || tile->load()) && areLoaded;
    return areLoaded;
}

void Terrain::Render(bool isShaded) {
    if (isShaded) {
        Render(Lights());
        return;
    }
    for (const auto& tile : tiles_) {
        tile->setSkipFirstPass(false);
        tile->setDrawSecondPass(false);
        tile->render(Lights());
    }
}

void Terrain::Render(const Lights& lights) {
    for (const auto& tile : tiles_) {
        tile->setSkipFirstPass(true);
        tile->setDrawSecondPass(true);
        tile->render(lights);
    }
}

float Terrain::GetElevation(float x, float y) const {
    if (tiles_.empty())
        printMessage("Terrain::GetElevation: No terrains loaded");
    float z = 0.0F;
    for (const auto& tile : tiles_)
        if (tile->getElevation(x, y, z))
            return z;
    return 0.0F;
}

SubTerrain::Bounds Terrain::BBox() const {
    SubTerrain::Bounds box;
    for (const auto& tile : tiles_) {
        const SubTerrain::Bounds& other = tile->bounds();
        for (std::size_t i = 0; i < box.minimum.size(); ++i) {
            const bool isFirst = tile == tiles_.front();
            box.minimum[i] = isFirst ? other.minimum[i] : std::min(box.minimum[i], other.minimum[i]);
            box.maximum[i] = isFirst ? other.maximum[i] : std::max(box.maximum[i], other.maximum[i]);
        }
    }
    return box;
}

void Terrain::print() const {
    std::puts("Terrain::print:");
    for (std::size_t i = 0; i < tiles_.size(); ++i)
        if (tiles_[i]->isLoaded())
            tiles_[i]->print();
        else
            std::printf("Terrain::print: %d not loaded\n", static_cast<int>(i));
}

void Terrain::CleanUp() {
    tiles_.clear();
    shared_ = SharedFiles();
    shaderDirectory_.clear();
}
