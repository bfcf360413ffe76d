// Reads the XML description of a terrain: the placement and the files of its tiles.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "subterrain.h"

// XML; docs/file-formats.md shows one. Before <subs>: <base>, <radbase>, <datadir>, <asterdb>. Inside, for each
// tile, <subterrain n="N"> with the elements that kindOfElement knows; <vec dir="x"> and <vec dir="y"> hold <i> and
// <j>.

namespace sorvane {
// What a description says besides its tiles.
struct TerrainDescription {
    std::string base;    // of the tiles' file names
    std::string radbase; // of their radiance files; base where there is none
    std::string datadir; // used when the caller names no directory
    std::string asterdb; // directory of the spectral library
};
} // namespace sorvane

// The number of tiles in the whole document, said on standard output; 0 after a line there when it can't be opened or
// parsed.
int countSubterrains(const std::string& path);

// Makes the tiles, each with its placement and its files in `dir`, or in the described directory when `dir` is empty.
// Every tile gets the class table `cls2Aster`, or one named after directory and base when that is empty. Returns an
// array of `count` tiles for cleanUpSubTerrainList; a document that can't be opened or parsed has none. Elements that
// are missing, empty, nested or unknown change nothing else.
SubTerrain** readTerrainXML(
    const std::string& path, const std::string& dir, int& count, sorvane::TerrainDescription& description,
    const std::string& cls2Aster = "");

// Deletes the tiles and the array.
void cleanUpSubTerrainList(SubTerrain** tiles, int count);

namespace sorvane {
inline constexpr const char* kDescriptionExtension = "xml";

// Whether a text of any name holds the description of a set.
bool looksLikeDescription(std::string_view text);

// The folder in which the viewer looks for a set's files, whatever the description says: its own.
std::string folderOfDescription(const std::string& path);

// The description that takes the place of a topography raster: the one beside it of its stem; itself for a description.
std::string descriptionFor(const std::string& topography);

// What an element inside of <subs> has to hold; Other of those that hold no number.
enum class ElementKind { Integer, Real, Other };
ElementKind kindOfElement(std::string_view name);
inline constexpr const char* kTileElement = "subterrain";
inline constexpr const char* kTileNumber = "n"; // its attribute, an integer

// A set as readTerrainXML reads it.
struct TerrainSet {
    TerrainDescription description;
    std::vector<std::unique_ptr<SubTerrain>> tiles;
    std::string companionStem; // of the files that all tiles share
};
TerrainSet readTerrainSet(const std::string& path, const std::string& directory);
} // namespace sorvane

// Releases what the XML library holds for the whole process.
void cleanupXML();
