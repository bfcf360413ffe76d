// Tells what a file is, from its name and its first bytes.
#pragma once

#include <string>

enum class FileKind {
    Trajectory,
    Geometry,           // ".vnl"
    Reflectance,        // ".brdf"
    BodyRadiance,       // ".rad" of a body
    FormFactors,        // ".sff-txt"
    Atmosphere,         // ".atm"
    Rotor,              // any name
    Raster,             // of either family; what it holds follows from its extension
    TerrainDescription, // ".xml"
    ClassToAster,       // ".cls2aster"
    ClassToMaterial,    // ".cls2mat"
    Temperature,        // ".temp"
    Band,               // ".band"
    SpectralSample,     // ".txt"
    Unknown,
};

// What the file at `path` is. An extension that belongs to one kind decides whatever the file holds, and so does a
// trajectory's usual name ("ETXYZ.OUT…") or its ending ".Z"; of the two kinds of ".rad" the size and the header decide,
// of any other name the first lines. Unknown too for what is no regular file or can't be opened.
FileKind fileKindOf(const std::string& path);

// As records name it: "trajectory", "body radiance", …
const char* nameOf(FileKind kind);
