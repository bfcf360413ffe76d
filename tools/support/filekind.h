// Tells what a file is, from its name and its first bytes.
#pragma once

#include <string>

namespace sorvane {
enum class FileKind {
    Trajectory,
    Geometry,
    Reflectance,
    BodyRadiance,
    FormFactors,
    Atmosphere,
    Rotor,
    Raster, // of any family; what it holds follows from its extension
    TerrainDescription,
    ClassToAster,
    ClassToMaterial,
    Temperature,
    Band,
    SpectralSample,
    Unknown,
};

// What the file at `path` is, by what its readers know of their formats. An extension that belongs to one kind decides
// whatever the file holds, and so does a trajectory's usual name; of the two kinds of radiances the size and the header
// decide, of any other name the first lines. Unknown too for what is no regular file or can't be opened.
FileKind fileKindOf(const std::string& path);

// As records name it: "trajectory", "body radiance", …
const char* nameOf(FileKind kind);
} // namespace sorvane
