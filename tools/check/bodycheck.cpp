// Checks the files of a body.
#include "bodycheck.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>
#include <utility>

#include "atmfile.h"
#include "brdffile.h"
#include "facetarrays.h"
#include "loadercheck.h"
#include "radfile.h"
#include "rotor.h"
#include "subfacetfile.h"
#include "valuecheck.h"
#include "vnlfile.h"

namespace sorvane {
namespace {
constexpr const char* kValues = "unusable values";
constexpr const char* kFailure = "the file can't be loaded";

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

// Asks for a slot for every facet, as the geometry's loader does.
bool handsOutSlots(BrdfFile& brdf) {
    for (int facet = 0; facet < brdf.numFacets(); ++facet)
        if (brdf.SortedFacetIndex(facet) < 0)
            return false;
    return true;
}
} // namespace

std::optional<int> facetsOfGeometry(const std::string& path) {
    const std::optional<VnlFile::Counts> counts = VnlFile::readAnnouncedCounts(path);
    return counts && counts->facets >= 0 ? std::optional(counts->facets) : std::nullopt;
}

std::optional<int> checkGeometry(const std::string& path, FindingList& findings) {
    const std::optional<int> facets = facetsOfGeometry(path);
    FacetArrays arrays;
    VnlFile geometry;
    const int tried = facets.value_or(0) > kMaximumFacets ? 0 : facets.value_or(0);
    if (!checkLoader([&] { return geometry.LoadAlone(path, tried, arrays); }, findings, kFailure))
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
    for (const VnlFile::WrappedFacet& wrapped : geometry.wrappedFacets())
        findings.error(
            {wrapped.line}, "vertex numbers that 16 bits don't hold",
            std::string("facet ") + std::to_string(wrapped.facet + 1) + " names vertex " +
                std::to_string(wrapped.named) + ", which is not there: vertex " + std::to_string(wrapped.taken) +
                " takes its place, since only 16 bits of the numbers count in a body of up to " +
                std::to_string(VnlFile::kMost16BitVertices) + " vertices");
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
    checkClassValues(brdf, findings);
    if (brdf.numFacets() > kMaximumFacets) {
        findings.error({}, kValues, std::to_string(brdf.numFacets()) + " facets are more than can be loaded");
        return brdf.numFacets();
    }
    checkLoader([&] { return handsOutSlots(brdf); }, findings, kFailure);
    return brdf.numFacets();
}

std::optional<int> checkBodyRadiance(const std::string& path, FindingList& findings) {
    const std::optional<int> facets = RadFile::readAnnouncedFacets(path);
    RadFile rad;
    if (!checkLoader([&] { return rad.Load(path, facets.value_or(0)); }, findings, kFailure) || facets.value_or(0) < 1)
        return facets;
    const auto count = static_cast<std::size_t>(*facets);
    checkFinite({rad.rad(), count}, "radiance", findings);
    checkFinite({rad.bbe(), count}, "emittance", findings);
    checkNotNegative({rad.rad(), count}, "facet", "radiance", findings);
    checkNotNegative({rad.bbe(), count}, "facet", "emittance", findings);
    return facets;
}

std::optional<int> checkFormFactors(const std::string& path, FindingList& findings) {
    SubfacetFile file;
    if (!checkLoader([&] { return file.Load(path, {}, {}); }, findings, kFailure))
        return std::nullopt;
    checkFormFactorValues(file, findings);
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
    for (const auto& [what, radiance] :
         {std::pair{"the direct solar", atm.directSolarRadiance()},
          {"the diffuse sky's", atm.diffuseSkyRadiance()},
          {"the diffuse earth's", atm.diffuseEarthRadiance()}})
        if (radiance < 0.0F)
            findings.warning({}, kValues, std::string(what) + " radiance is negative");
}

void checkRotors(const std::string& path, FindingList& findings) {
    checkLoader(
        [&] {
            const Rotor rotors(path.c_str());
            return true;
        },
        findings, kFailure);
}
} // namespace sorvane
