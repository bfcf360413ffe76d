// Reads the XML description of a terrain: the placement and the files of its tiles.
#pragma once

#include <string>

class SubTerrain;

// What a description says besides its tiles.
struct TerrainDescription {
    std::string base;    // of the tiles' file names
    std::string radbase; // of their radiance files; base where there is none
    std::string datadir; // used when the caller names no directory
    std::string asterdb; // directory of the spectral library
};

// The number of tiles in the whole document, said on standard output; 0 after a line there when it can't be opened or
// parsed.
int countSubterrains(const std::string& path);

// Makes the tiles, each with its placement and its files in `dir`, or in the described directory when `dir` is empty.
// Every tile gets the class table `cls2Aster`, or one named after directory and base when that is empty. Returns an
// array of `count` tiles for cleanUpSubTerrainList; a document that can't be opened or parsed has none. Elements that
// are missing, empty, nested or unknown change nothing else.
SubTerrain** readTerrainXML(
    const std::string& path, const std::string& dir, int& count, TerrainDescription& description,
    const std::string& cls2Aster = "");

// Deletes the tiles and the array.
void cleanUpSubTerrainList(SubTerrain** tiles, int count);

// Releases what the XML library holds for the whole process.
void cleanupXML();
