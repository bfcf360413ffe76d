// The demonstration's landscape with the reflectances of measured spectra.
#include "terrainset.h"

#include "describedset.h"
#include "groundclass.h"
#include "spectrum.h"

namespace sorvane {
namespace {
constexpr const char* kStem = "ter0020/ter0020";

std::string classToAster() {
    std::string text = "# class, sample of the spectral library\n";
    for (const GroundCover& cover : kGroundCovers) {
        text += std::to_string(static_cast<int>(cover.ground)) + ' ';
        text += cover.percentReflectance > 0.0 ? cover.name : "aster::alpha";
        text += '\n';
    }
    return text;
}
} // namespace

std::vector<DemonstrationFile> terrainSetFiles(const std::string& root, const AtmosphereValues& atmosphere) {
    std::vector<DemonstrationFile> files = describedSetFiles(
        {.name = "ter0020",
         .tilesEachWay = 3,
         .posts = 97,
         .cellMetres = 22.5,
         .launchHeight = 350.0,
         .spectra = root + "/ter0020/spectra"},
        atmosphere);
    files.push_back({std::string(kStem) + ".cls2aster", classToAster()});
    files.push_back({std::string(kStem) + ".band", "Mid-wave infrared, micrometres\n3.0 5.0\n"});
    files.push_back({std::string(kStem) + ".atm", atmosphereText(atmosphere)});
    for (const GroundCover& cover : kGroundCovers)
        if (cover.percentReflectance > 0.0)
            files.push_back({std::string("ter0020/spectra/") + cover.name + ".txt", spectrumText(cover)});
    return files;
}
} // namespace sorvane
