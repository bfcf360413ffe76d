// The terrain under an engagement.
#include "terrain.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "dataroot.h"
#include "filechecks.h"
#include "loadclsfile.h"
#include "messages.h"
#include "rasterfamily.h"
#include "terrainreflectance.h"
#include "terrainxmlparser.h"
#include "torvaleraster.h"

using namespace sorvane;

namespace {
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
    const sorvane::RasterFamily* const named = sorvane::topographyFamilyOf(topo);
    const sorvane::RasterHeader header = (named != nullptr ? *named : sorvane::kTorvaleFamily).readHeader(topo);
    tile.setWidth(header.size.columns);
    tile.setHeight(header.size.rows);
    tile.setXvec(header.cellX, 0.0F);
    tile.setYvec(0.0F, header.cellY);
    tile.setMinZ(header.minimum);
    tile.setMaxZ(header.maximum);
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
    const std::string description = sorvane::descriptionFor(topo);
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
    return load(description, sorvane::folderOfDescription(description), range);
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
    sorvane::TerrainSet set = sorvane::readTerrainSet(description, directory);
    tiles_ = std::move(set.tiles);
    if (tiles_.empty())
        return false;

    SharedFiles files = filesBeside(set.companionStem);
    if (files.asterDirectory.empty())
        files.asterDirectory = set.description.asterdb;
    printMessage(
        "terrain::load: dynamic sunlight reflections: %s", FileExists(files.companions.atmosphere) ? "ON" : "OFF");
    const bool isReflective = reportRoutes(files.companions.reflectanceFiles(files.asterDirectory));
    printMessage("terrain::load: dynamic light reflections: %s", isReflective ? "ON" : "OFF");
    share(files, radianceScale);
    return true;
}

Terrain::SharedFiles Terrain::filesBeside(const std::string& stem) const {
    const std::string shaders = shaderDirectory_.empty() ? dataPath("openglshaders/") : shaderDirectory_;
    SharedFiles files = shared_;
    files.vertexShader = firstExisting(shared_.vertexShader, inDirectory(shaders, "TerrainRefl.vert"));
    files.fragmentShader = firstExisting(shared_.fragmentShader, inDirectory(shaders, "TerrainRefl.frag"));
    const sorvane::TerrainCompanions beside = sorvane::companionsOf(stem);
    for (const auto companion : sorvane::TerrainCompanions::kAll)
        files.companions.*companion = firstExisting(shared_.companions.*companion, beside.*companion);
    return files;
}

void Terrain::share(const SharedFiles& files, float radianceScale) {
    using Setter = void (SubTerrain::*)(const std::string&);
    const std::pair<const std::string&, Setter> settings[] = {
        {files.companions.atmosphere, &SubTerrain::setAtmFile},
        {files.vertexShader, &SubTerrain::setVertShader},
        {files.fragmentShader, &SubTerrain::setFragShader},
        {files.companions.band, &SubTerrain::setBandFilePath},
        {files.companions.classToAster, &SubTerrain::setCls2AsterFilePath},
        {files.companions.classToMaterial, &SubTerrain::setCls2MatFilePath},
        {files.companions.temperature, &SubTerrain::setTempFilePath},
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

bool sorvane::isTerrainNews(std::string_view line) {
    constexpr std::string_view kBeginnings[] = {
        "total of ", "terrain::load: dynamic ", "SubTerran::loadTextures: min: ", "output result",
        "LoadRadMap::isOldRadMap: using "};
    const auto begins = [line](std::string_view beginning) {
        return line.starts_with(beginning);
    };
    return line == "SubTerrain::load" || std::ranges::any_of(kBeginnings, begins) ||
           line.find_first_not_of("0123456789.- ") == std::string_view::npos;
}

bool Terrain::isWhole() const {
    return !tiles_.empty() && std::ranges::all_of(tiles_, [](const auto& tile) { return tile->isWhole(); });
}

bool Terrain::isLoaded() const {
    return std::ranges::all_of(tiles_, [](const auto& tile) { return tile->isLoaded(); });
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
    Render(
        lights, {[](const SubTerrain&) { return true; },
                 [](const SubTerrain::Bounds&) {
                     return true;
                 }});
}

void Terrain::Render(const Lights& lights, const Choice& choice) {
    for (const auto& tile : tiles_) {
        tile->setSkipFirstPass(true);
        tile->setDrawSecondPass(true);
        if ((tile->isLoaded() || (choice.loads && tile->load())) && choice.isTileWanted(*tile))
            tile->render(lights, choice.isPartWanted, choice.brightness);
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
