// Reads the XML description of a terrain.
#include "terrainxmlparser.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string_view>
#include <unistd.h>
#include <utility>

#include <libxml/xmlreader.h>

#include "cls2asterfile.h"
#include "cnumericlocale.h"
#include "filechecks.h"
#include "inputfile.h"
#include "loadclsfile.h"
#include "loadnormfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "messages.h"
#include "subterrain.h"

using namespace sorvane;

namespace {
// A reader over a file that is certainly a regular one. Entities stay as they are and nothing is fetched.
class Reader {
public:
    explicit Reader(const std::string& path) : descriptor_(openRegularFile(path)) {
        if (descriptor_ >= 0)
            reader_ = xmlReaderForFd(descriptor_, path.c_str(), nullptr, XML_PARSE_NONET);
    }
    ~Reader() {
        if (reader_ != nullptr)
            xmlFreeTextReader(reader_);
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    xmlTextReaderPtr get() const { return reader_; }

private:
    int descriptor_;
    xmlTextReaderPtr reader_ = nullptr;
};

std::string_view nodeName(xmlTextReaderPtr reader) {
    const xmlChar* const name = xmlTextReaderConstName(reader);
    return name == nullptr ? std::string_view() : reinterpret_cast<const char*>(name);
}

std::string nodeText(xmlTextReaderPtr reader) {
    const xmlChar* const value = xmlTextReaderConstValue(reader);
    return value == nullptr ? std::string() : reinterpret_cast<const char*>(value);
}

std::string attribute(xmlTextReaderPtr reader, const char* name) {
    xmlChar* const value = xmlTextReaderGetAttribute(reader, reinterpret_cast<const xmlChar*>(name));
    std::string text = value == nullptr ? "" : reinterpret_cast<const char*>(value);
    xmlFree(value);
    return text;
}

bool isStart(xmlTextReaderPtr reader) {
    return xmlTextReaderNodeType(reader) == XML_READER_TYPE_ELEMENT;
}
bool isEnd(xmlTextReaderPtr reader) {
    return xmlTextReaderNodeType(reader) == XML_READER_TYPE_END_ELEMENT;
}
bool isText(xmlTextReaderPtr reader) {
    const int type = xmlTextReaderNodeType(reader);
    return type == XML_READER_TYPE_TEXT || type == XML_READER_TYPE_CDATA;
}

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
    int index = 0;              // of the next tile, or of the one that is open
    SubTerrain* tile = nullptr; // the open one
    std::string element{};      // whose text comes next
};

std::string inDirectory(const std::string& dir, const std::string& name) {
    return dir.ends_with('/') ? dir + name : dir + "/" + name;
}

void openTile(xmlTextReaderPtr reader, State& state) {
    if (state.index >= state.capacity)
        return;
    // A tile inside a tile takes its place.
    delete state.tiles[state.index];
    state.tile = state.tiles[state.index] = new SubTerrain;
    const std::string& dir = state.dir.empty() ? state.description.datadir : state.dir;
    char number[20];
    std::snprintf(number, sizeof number, "_n%04d", toInt(attribute(reader, sorvane::kTileNumber)));
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
void processVecNode(xmlTextReaderPtr reader, SubTerrain* tile, bool isX) {
    float i = 0.0F;
    float j = 0.0F;
    std::string element;
    bool isAtEnd = xmlTextReaderIsEmptyElement(reader) == 1;
    while (!isAtEnd) {
        if (xmlTextReaderRead(reader) != 1)
            return;
        if (isStart(reader)) {
            element = nodeName(reader);
            if (std::ranges::find(kVectorParts, element) == std::end(kVectorParts))
                printMessage("terrainXmlParser::processVecNode: don't know what's going on here");
        } else if (isText(reader)) {
            if (element == "i")
                i = toFloat(nodeText(reader));
            else if (element == "j")
                j = toFloat(nodeText(reader));
        } else if (isEnd(reader)) {
            element.clear();
            isAtEnd = nodeName(reader) == "vec";
        }
    }
    if (tile == nullptr)
        return;
    if (isX)
        tile->setXvec(i, j);
    else
        tile->setYvec(i, j);
}

void processStart(xmlTextReaderPtr reader, State& state) {
    const std::string_view name = nodeName(reader);
    const bool isEmpty = xmlTextReaderIsEmptyElement(reader) == 1;
    state.element = isEmpty ? std::string_view() : name;
    if (name == "subs") {
        if (state.isInList)
            printMessage("terrainXmlParser::processNode: shouldn't have found a <subs>");
        state.isInList = state.isInList || !isEmpty;
    } else if (state.isInList && name == sorvane::kTileElement) {
        openTile(reader, state);
        if (isEmpty)
            closeTile(state);
    } else if (state.isInList && name == "vec") {
        processVecNode(reader, state.tile, attribute(reader, "dir") != "y");
        state.element.clear();
    }
}

void processNode(xmlTextReaderPtr reader, State& state) {
    if (isStart(reader)) {
        processStart(reader, state);
    } else if (isText(reader)) {
        if (!state.isInList)
            takeHeaderText(nodeText(reader), state);
        else if (state.tile != nullptr)
            takePlacementText(nodeText(reader), state.element, *state.tile);
        state.element.clear();
    } else if (isEnd(reader)) {
        state.element.clear();
        if (nodeName(reader) == sorvane::kTileElement)
            closeTile(state);
        else if (nodeName(reader) == "subs")
            state.isInList = false;
    }
}

void processNodeCount(xmlTextReaderPtr reader, int& count) {
    if (isStart(reader) && nodeName(reader) == sorvane::kTileElement)
        ++count;
}
} // namespace

int countSubterrains(const std::string& path) {
    const Reader reader(path);
    if (reader.get() == nullptr) {
        printMessage("Unable to open %s", path.c_str());
        return 0;
    }
    int count = 0;
    int result = xmlTextReaderRead(reader.get());
    for (; result == 1; result = xmlTextReaderRead(reader.get()))
        processNodeCount(reader.get(), count);
    if (result != 0) {
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
    const Reader reader(path);
    if (reader.get() == nullptr) {
        printMessage("terrainXmlParser::readTerrainXML: Unable to open %s", path.c_str());
        return tiles.release();
    }
    State state{description, dir, cls2Aster, tiles.get(), capacity};
    int result = xmlTextReaderRead(reader.get());
    for (; result == 1; result = xmlTextReaderRead(reader.get()))
        processNode(reader.get(), state);
    closeTile(state);
    count = state.index;
    if (result != 0) {
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
