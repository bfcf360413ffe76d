// Checks the files of a body.
#include "bodycheck.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <span>

#include "atmfile.h"
#include "brdffile.h"
#include "facetarrays.h"
#include "inputfile.h"
#include "loadercheck.h"
#include "radfile.h"
#include "rotor.h"
#include "subfacetfile.h"
#include "vnlfile.h"

namespace {
constexpr const char* kValues = "unusable values";
constexpr const char* kFailure = "the file can't be loaded";
constexpr int kMostFacets = 65536 / 3; // by 16-bit numbers of corners
constexpr int kRefusedFacets = 1 << 24;

std::optional<int> facetsOfRadiance(const std::string& path) {
    constexpr std::size_t kCountOffset = 40;
    std::int32_t facets = 0;
    const std::optional<std::string> head = readInputFile(path, kCountOffset + sizeof facets);
    if (!head || head->size() < kCountOffset + sizeof facets)
        return std::nullopt;
    std::memcpy(&facets, head->data() + kCountOffset, sizeof facets);
    return facets;
}

// A geometry file loads only together with the other two: files of one class and no radiance take their place.
std::string plainReflectance(int facets) {
    std::string text = "BRDF\n1\n0 1 0 1 2 -\n";
    if (facets > 0)
        text += std::string("1 ") + std::to_string(facets) + " 1 -\n";
    return text;
}

std::string noRadiance(int facets) {
    std::string bytes(84 + 8 * static_cast<std::size_t>(facets), '\0');
    std::memcpy(bytes.data() + 40, &facets, sizeof facets);
    return bytes;
}

bool isFinite(const Tuple3<float>& triple) {
    return std::isfinite(triple.x) && std::isfinite(triple.y) && std::isfinite(triple.z);
}

// Reports the first facet, counted from 1, whose value isn't finite.
void checkFinite(std::span<const float> perFacet, const char* what, FindingList& findings) {
    const auto found = std::ranges::find_if_not(perFacet, [](float value) { return std::isfinite(value); });
    if (found != perFacet.end())
        findings.error(
            {}, kValues,
            std::string("the ") + what + " of facet " + std::to_string(found - perFacet.begin() + 1) +
                " is not finite");
}

bool loadGeometry(const std::string& path, int facets, FacetArrays& arrays) {
    BrdfFile brdf;
    RadFile rad;
    VnlFile vnl;
    return brdf.parse(plainReflectance(facets)) && rad.parse(noRadiance(facets), facets) && arrays.allocate(facets) &&
           vnl.Load(
               path, brdf, rad, arrays.indices_.get(), arrays.vertices_.get(), arrays.normals_.get(),
               arrays.primaryColors_.get(), arrays.secondaryColors_.get(), arrays.facetCentroids_.get(),
               arrays.facetNormals_.get(), arrays.facetMap_.get());
}

// Asks for a slot for every facet, as the geometry's loader does.
bool handsOutSlots(BrdfFile& brdf) {
    for (int facet = 0; facet < brdf.numFacets(); ++facet)
        if (brdf.SortedFacetIndex(facet) < 0)
            return false;
    return true;
}
} // namespace

std::optional<int> facetsOfGeometry(const std::string& path) {
    const std::optional<std::string> head = readInputFile(path, 256);
    int vertices = 0;
    int facets = 0;
    if (!head || std::sscanf(head->c_str(), "%d %d", &vertices, &facets) != 2 || facets < 0)
        return std::nullopt;
    return facets;
}

std::optional<int> checkGeometry(const std::string& path, FindingList& findings) {
    const std::optional<int> facets = facetsOfGeometry(path);
    FacetArrays arrays;
    const int tried = facets.value_or(0) > kRefusedFacets ? 0 : facets.value_or(0);
    if (!checkLoader([&] { return loadGeometry(path, tried, arrays); }, findings, kFailure))
        return facets;
    const auto corners = 3 * static_cast<std::size_t>(tried);
    for (std::size_t corner = 0; corner < corners; ++corner)
        if (!isFinite(arrays.vertices_[corner]) || !isFinite(arrays.normals_[corner])) {
            findings.error(
                {}, kValues,
                std::string("facet ") + std::to_string(corner / 3 + 1) +
                    " has a vertex or a normal that is not finite");
            break;
        }
    if (tried > kMostFacets)
        findings.warning(
            {}, kValues,
            std::to_string(tried) + " facets are too many: " + std::to_string(kMostFacets) + " can be drawn rightly");
    return facets;
}

std::optional<int> checkReflectance(const std::string& path, FindingList& findings) {
    BrdfFile brdf;
    if (!checkLoader([&] { return brdf.Load(path); }, findings, kFailure))
        return std::nullopt;
    for (std::size_t i = 0; i < brdf.classes().size(); ++i) {
        const BrdfClass& c = brdf.classes()[i];
        for (const float value : {c.rho_d, c.epsilon, c.b, c.e, c.G})
            if (!std::isfinite(value)) {
                findings.error(
                    {static_cast<std::int64_t>(i) + 3}, kValues,
                    "the class's parameters, or the normalisation that follows from the third, are not finite");
                break;
            }
    }
    checkLoader([&] { return handsOutSlots(brdf); }, findings, kFailure);
    return brdf.numFacets();
}

std::optional<int> checkBodyRadiance(const std::string& path, FindingList& findings) {
    const std::optional<int> facets = facetsOfRadiance(path);
    RadFile rad;
    if (!checkLoader([&] { return rad.Load(path, facets.value_or(0)); }, findings, kFailure) || facets.value_or(0) < 1)
        return facets;
    const auto count = static_cast<std::size_t>(*facets);
    checkFinite({rad.rad(), count}, "radiance", findings);
    checkFinite({rad.bbe(), count}, "emittance", findings);
    return facets;
}

std::optional<int> checkFormFactors(const std::string& path, FindingList& findings) {
    SubfacetFile file;
    if (!checkLoader([&] { return file.Load(path, {}, {}); }, findings, kFailure))
        return std::nullopt;
    return static_cast<int>(file.facetCount());
}

void checkAtmosphere(const std::string& path, FindingList& findings) {
    AtmFile atm;
    if (!checkLoader([&] { return atm.Load(path); }, findings, kFailure))
        return;
    const float values[] = {atm.solarZenith(),        atm.solarAzimuth(),        atm.diffuseEarthRadiance(),
                            atm.diffuseSkyRadiance(), atm.directSolarRadiance(), atm.signatureBearing()};
    if (!std::ranges::all_of(values, [](float value) { return std::isfinite(value); }))
        findings.error({}, kValues, "the sun's direction or a radiance is not finite");
}

void checkRotors(const std::string& path, FindingList& findings) {
    checkLoader(
        [&] {
            const Rotor rotors(path.c_str());
            return true;
        },
        findings, kFailure);
}
