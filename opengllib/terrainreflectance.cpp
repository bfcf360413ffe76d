// The reflectance of a tile's posts.
#include "terrainreflectance.h"

#include <filesystem>
#include <tuple>
#include <vector>

#include "bandfile.h"
#include "cls2asterfile.h"
#include "loadclstomatfile.h"
#include "loadmaterialtables.h"
#include "terrainfileexists.h"

namespace sorvane {
namespace {
constexpr std::size_t kClasses = std::tuple_size_v<ClassReflectances>;

bool isDirectory(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

// Which classes a raster uses, so that a table is asked for each of them once.
std::array<bool, kClasses> classesOf(const unsigned char* classes, std::size_t posts) {
    std::array<bool, kClasses> isUsed{};
    for (std::size_t i = 0; i < posts; ++i)
        isUsed[classes[i]] = true;
    return isUsed;
}

bool readAsterReflectances(
    const ReflectanceFiles& files, const std::array<bool, kClasses>& isUsed, ClassReflectances& reds) {
    if (BandFile::instance_ == nullptr)
        BandFile::Create();
    float lambda1 = 0.0F;
    float lambda2 = 0.0F;
    if (!BandFile::instance_->GetLambda(files.band, lambda1, lambda2))
        return false;
    Cls2AsterFile table;
    if (!table.load(files.classToAster, files.asterDirectory, lambda1, lambda2))
        return false;
    for (std::size_t cls = 0; cls < kClasses; ++cls)
        if (isUsed[cls])
            reds[cls] = table.getAsterByClass(static_cast<int>(cls)).getReflectance();
    return true;
}

bool readMaterialReflectances(const ReflectanceFiles& files, ClassReflectances& reds) {
    std::array<unsigned char, std::size_t{2} * kMaximumClassPairs> table{};
    unsigned count = 0;
    if (!loadCLStoMatFile(files.classToMaterial, table.data(), count))
        return false;
    const unsigned char materials = numMats(table.data(), count);
    std::vector<float> pairs(2 * std::size_t{materials});
    if (!loadTempFile(files.temperature, materials, pairs.data()))
        return false;
    for (std::size_t pair = count; pair-- > 0;) { // backwards, so that the first pair of a class stays
        const std::size_t material = table[2 * pair + 1];
        reds[table[2 * pair]] = material == 0 ? 0.0F : 1.0F - pairs[2 * (material - 1) + 1];
    }
    return true;
}
} // namespace

ReflectanceRoute reflectanceRoute(const ReflectanceFiles& files) {
    if (FileExists(files.classToAster) && isDirectory(files.asterDirectory) && FileExists(files.band))
        return ReflectanceRoute::Aster;
    if (FileExists(files.classToMaterial) && FileExists(files.temperature))
        return ReflectanceRoute::Material;
    return ReflectanceRoute::None;
}

bool hasReflectanceFile(const ReflectanceFiles& files) {
    return FileExists(files.classToAster) || isDirectory(files.asterDirectory) || FileExists(files.band) ||
           FileExists(files.classToMaterial) || FileExists(files.temperature);
}

bool readReflectances(
    const ReflectanceFiles& files, ReflectanceRoute route, const unsigned char* classes, std::size_t posts,
    ClassReflectances& reflectances) {
    reflectances.fill(0.0F);
    return route == ReflectanceRoute::Aster ? readAsterReflectances(files, classesOf(classes, posts), reflectances)
                                            : readMaterialReflectances(files, reflectances);
}
} // namespace sorvane
