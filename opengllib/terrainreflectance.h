// The reflectance of a tile's posts, from their material classes by either of two routes.
#pragma once

#include <array>
#include <cstddef>
#include <string>

namespace sorvane {
// The files of both routes. A route is taken when all of its files exist, the spectral one first.
struct ReflectanceFiles {
    std::string classes; // of both
    // Spectral route: band averages of samples of a spectral library.
    std::string classToAster;
    std::string asterDirectory;
    std::string band;
    // Material route: 1 - the second number on the material's line, the emittance.
    std::string classToMaterial;
    std::string temperature;
};

enum class ReflectanceRoute { None, Aster, Material };

// Which route's files exist, the class raster aside.
ReflectanceRoute reflectanceRoute(const ReflectanceFiles& files);
// Whether some file of a route exists, the class raster aside.
bool hasReflectanceFile(const ReflectanceFiles& files);

// By class.
using ClassReflectances = std::array<float, 256>;

// The reflectances of the classes that `posts` posts have. A class that the spectral table lacks, or gives no material,
// gets -1; one that the material table lacks, or gives material 0, gets 0. False when a file does not load.
bool readReflectances(
    const ReflectanceFiles& files, ReflectanceRoute route, const unsigned char* classes, std::size_t posts,
    ClassReflectances& reflectances);
} // namespace sorvane
