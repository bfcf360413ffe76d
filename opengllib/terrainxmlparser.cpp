// Reads the XML description of a terrain.
#include "terrainxmlparser.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>
#include <utility>

#include <libxml/parser.h>

#include "cls2asterfile.h"
#include "cnumericlocale.h"
#include "filechecks.h"
#include "loadclsfile.h"
#include "loadnormfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "messages.h"
#include "subterrain.h"
#include "xmlreader.h"

using namespace sorvane;

namespace {
int toInt(const std::string& text) {
    return static_cast<int>(std::clamp<long>(std::strtol(text.c_str(), nullptr, 10), INT_MIN, INT_MAX));
}
float toFloat(const std::string& text) {
    return std::strtof(text.c_str(), nullptr);
}

// What is known of the document on the way through it.
struct State {
    TerrainDescription& description;
    std::string dir;
    std::string cls2Aster;
    SubTerrain** tiles;
    int capacity;

    bool isInList = false;
    bool isPastHeader = false;  // a list has begun, empty ones included
    int index = 0;              // of the next tile, or of the one that is open
    SubTerrain* tile = nullptr; // the open one
    std::string element{};      // whose text comes next
};

std::string inDirectory(const std::string& dir, const std::string& name) {
    return dir.ends_with('/') ? dir + name : dir + "/" + name;
}

void openTile(XmlReader& reader, State& state) {
    if (state.index >= state.capacity)
        return;
    // A tile inside a tile takes its place.
    delete state.tiles[state.index];
    state.tile = state.tiles[state.index] = new SubTerrain;
    const std::string& dir = state.dir.empty() ? state.description.datadir : state.dir;
    char number[20];
    std::snprintf(number, sizeof number, "_n%04d", toInt(reader.attribute(kTileNumber)));
    const std::string stem = inDirectory(dir, state.description.base + number);
    state.tile->setTopoFilePath(stem + "." + FTOP_EXT);
    state.tile->setNormFilePath(stem + "." + NORM_EXT);
    state.tile->setRadFilePath(inDirectory(dir, state.description.radbase + number) + "." + RAD_EXT);
    state.tile->setClassFilePath(stem + "." + CLS_EXT);
    state.tile->setCls2AsterFilePath(
        state.cls2Aster.empty() ? inDirectory(dir, state.description.base) + "." + CLS2ASTER_EXT : state.cls2Aster);
    if (!state.description.asterdb.empty())
        state.tile->setAsterDbFilePath(state.description.asterdb);
}

void closeTile(State& state) {
    if (state.tile != nullptr)
        ++state.index;
    state.tile = nullptr;
}

void takeHeaderText(const std::string& text, State& state) {
    TerrainDescription& d = state.description;
    if (state.element == "base") {
        d.base = text;
        if (d.radbase.empty())
            d.radbase = text;
    } else if (state.element == "radbase") {
        d.radbase = text;
    } else if (state.element == "datadir") {
        d.datadir = text;
    } else if (state.element == "asterdb") {
        d.asterdb = text;
    }
}

constexpr struct {
    std::string_view element;
    void (SubTerrain::*set)(int);
} kIntegers[] = {
    {"width", &SubTerrain::setWidth},
    {"height", &SubTerrain::setHeight},
};

constexpr struct {
    std::string_view element;
    void (SubTerrain::*set)(float);
} kReals[] = {
    {"origin_x", &SubTerrain::setOriginX},
    {"origin_y", &SubTerrain::setOriginY},
    {"minZ", &SubTerrain::setMinZ},
    {"maxZ", &SubTerrain::setMaxZ},
};

constexpr std::string_view kVectorParts[] = {"i", "j"};

void takePlacementText(const std::string& text, std::string_view element, SubTerrain& tile) {
    for (const auto& [name, set] : kIntegers)
        if (element == name)
            (tile.*set)(toInt(text));
    for (const auto& [name, set] : kReals)
        if (element == name)
            (tile.*set)(toFloat(text));
}

// Reads up to the end of a <vec>, whose start is current. Without a tile its numbers go nowhere.
void processVecNode(XmlReader& reader, SubTerrain* tile, bool isX) {
    float i = 0.0F;
    float j = 0.0F;
    std::string element;
    bool isAtEnd = reader.isEmptyElement();
    while (!isAtEnd) {
        if (!reader.read())
            return;
        if (reader.isStart()) {
            element = reader.name();
            if (std::ranges::find(kVectorParts, element) == std::end(kVectorParts))
                printMessage("terrainXmlParser::processVecNode: don't know what's going on here");
        } else if (reader.isText()) {
            if (element == "i")
                i = toFloat(reader.text());
            else if (element == "j")
                j = toFloat(reader.text());
        } else if (reader.isEnd()) {
            element.clear();
            isAtEnd = reader.name() == "vec";
        }
    }
    if (tile == nullptr)
        return;
    if (isX)
        tile->setXvec(i, j);
    else
        tile->setYvec(i, j);
}

void processStart(XmlReader& reader, State& state) {
    const std::string_view name = reader.name();
    const bool isEmpty = reader.isEmptyElement();
    state.element = isEmpty ? std::string_view() : name;
    if (name == "subs") {
        if (state.isInList)
            printMessage("terrainXmlParser::processNode: shouldn't have found a <subs>");
        state.isInList = state.isInList || !isEmpty;
        state.isPastHeader = true;
    } else if (state.isInList && name == kTileElement) {
        openTile(reader, state);
        if (isEmpty)
            closeTile(state);
    } else if (state.isInList && name == "vec") {
        processVecNode(reader, state.tile, reader.attribute("dir") != "y");
        state.element.clear();
    }
}

void processNode(XmlReader& reader, State& state) {
    if (reader.isStart()) {
        processStart(reader, state);
    } else if (reader.isText()) {
        if (!state.isPastHeader)
            takeHeaderText(reader.text(), state);
        else if (state.tile != nullptr)
            takePlacementText(reader.text(), state.element, *state.tile);
        state.element.clear();
    } else if (reader.isEnd()) {
        state.element.clear();
        if (reader.name() == kTileElement)
            closeTile(state);
        else if (reader.name() == "subs")
            state.isInList = false;
    }
}

void processNodeCount(XmlReader& reader, int& count) {
    if (reader.isStart() && reader.name() == kTileElement)
        ++count;
}
} // namespace

int countSubterrains(const std::string& path) {
    XmlReader reader(path);
    if (!reader.isOpen()) {
        printMessage("Unable to open %s", path.c_str());
        return 0;
    }
    int count = 0;
    while (reader.read())
        processNodeCount(reader, count);
    if (!reader.isWellFormed()) {
        printMessage("%s : failed to parse", path.c_str());
        return 0;
    }
    printMessage("total of %d subterrains", count);
    return count;
}

SubTerrain** readTerrainXML(
    const std::string& path, const std::string& dir, int& count, TerrainDescription& description,
    const std::string& cls2Aster) {
    const CNumericLocale decimalPoint;
    count = 0;
    const int capacity = countSubterrains(path);
    auto tiles = std::make_unique<SubTerrain*[]>(static_cast<std::size_t>(capacity)); // null until read
    XmlReader reader(path);
    if (!reader.isOpen()) {
        printMessage("terrainXmlParser::readTerrainXML: Unable to open %s", path.c_str());
        return tiles.release();
    }
    State state{description, dir, cls2Aster, tiles.get(), capacity};
    while (reader.read())
        processNode(reader, state);
    closeTile(state);
    count = state.index;
    if (!reader.isWellFormed()) {
        printMessage("terrainXmlParser::readTerrainXML: %s : failed to parse", path.c_str());
        for (int i = 0; i < capacity; ++i)
            delete std::exchange(tiles[static_cast<std::size_t>(i)], nullptr);
        count = 0;
    }
    return tiles.release();
}

void cleanUpSubTerrainList(SubTerrain** tiles, int count) {
    for (int i = 0; i < count; ++i)
        delete tiles[i];
    delete[] tiles;
}

namespace sorvane {
bool looksLikeDescription(std::string_view text) {
    return text.find("<subterrain") != std::string_view::npos;
}

std::string folderOfDescription(const std::string& path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

std::string descriptionFor(const std::string& topography) {
    return std::filesystem::path(topography).replace_extension(kDescriptionExtension).string();
}

ElementKind kindOfElement(std::string_view name) {
    const auto isNamed = [name](const auto& row) {
        return row.element == name;
    };
    if (std::ranges::any_of(kIntegers, isNamed))
        return ElementKind::Integer;
    const bool isPart = std::ranges::find(kVectorParts, name) != std::end(kVectorParts);
    return isPart || std::ranges::any_of(kReals, isNamed) ? ElementKind::Real : ElementKind::Other;
}

TerrainSet readTerrainSet(const std::string& path, const std::string& directory) {
    TerrainSet set;
    int count = 0;
    SubTerrain** const list = readTerrainXML(path, directory, count, set.description);
    for (int i = 0; i < count; ++i)
        set.tiles.emplace_back(std::exchange(list[i], nullptr));
    cleanUpSubTerrainList(list, count);
    const std::string& folder = directory.empty() ? set.description.datadir : directory;
    set.companionStem = folder.empty() ? set.description.base : inDirectory(folder, set.description.base);
    return set;
}
} // namespace sorvane

void cleanupXML() {
    xmlCleanupParser();
}
