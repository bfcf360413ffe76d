// The families of raster files: one table from which loaders, sizes, identification and descriptions take what differs.
#include "rasterfamily.h"

#include <algorithm>

#include "bkgraster.h"
#include "filechecks.h"
#include "inputfile.h"
#include "torvaleraster.h"

namespace sorvane {
namespace {
// The family without a signature stands last.
constexpr const RasterFamily* kFamilies[] = {&kBkgFamily, &kTorvaleFamily};

bool claims(const RasterFamily& family, std::string_view firstBytes) {
    return family.hasSignature != nullptr && family.hasSignature(firstBytes);
}
} // namespace

std::span<const RasterFamily* const> rasterFamilies() {
    return kFamilies;
}

const RasterFamily* topographyFamilyOf(const std::string& path) {
    const auto isOf = [&](const RasterFamily* family) {
        return checkExtension(path, family->topographyExtension);
    };
    const auto* const found = std::ranges::find_if(kFamilies, isOf);
    return found == std::end(kFamilies) ? nullptr : *found;
}

const RasterFamily& familyOfBytes(std::string_view firstBytes) {
    for (const RasterFamily* family : kFamilies)
        if (claims(*family, firstBytes))
            return *family;
    return *std::end(kFamilies)[-1];
}

const RasterFamily& familyByFirstBytes(const std::string& path) {
    return familyOfBytes(readInputFile(path, kSignatureBytes).value_or(""));
}

const RasterFamily& rasterFamilyOf(const std::string& path) {
    const RasterFamily* const ofTopography = topographyFamilyOf(path);
    return ofTopography != nullptr ? *ofTopography : familyByFirstBytes(path);
}

bool hasRasterSignature(std::string_view firstBytes) {
    return claims(familyOfBytes(firstBytes), firstBytes);
}
} // namespace sorvane
