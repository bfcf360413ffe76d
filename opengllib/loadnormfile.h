// Loads the surface normals of a raster's cells, of either raster family.
#pragma once

#include <string>

inline constexpr const char* NORM_EXT = "norm";

// One normal, as it stands in the file.
struct Vertex3 {
    float x, y, z;
};
namespace sorvane {
static_assert(sizeof(Vertex3) == 12);

// A new array of rows × columns normals, which the caller releases with delete[], or null after a message. Normals that
// the file lacks are 0.
} // namespace sorvane

// A packtype of 4 or more is refused without a message; rows are not padded.
Vertex3* loadNormFileTORVAL(const std::string& path);
// The header's signature must be "NORM".
Vertex3* loadNormFileMORLAN(const std::string& path);
// As the family of its first bytes reads it.
Vertex3* loadNormFile(const std::string& path);
