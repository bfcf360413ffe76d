// Describes the files of a body, each by itself.
#include "bodyinfo.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <numeric>

#include "atmfile.h"
#include "brdffile.h"
#include "facetarrays.h"
#include "radfile.h"
#include "rotor.h"
#include "shortestnumber.h"
#include "subfacetfile.h"
#include "vnlfile.h"

namespace sorvane {
namespace {
const Problem kCannotBeRead{"can't be read"};

InfoRecord pointRecord(const Tuple3<float>& point) {
    const float values[] = {point.x, point.y, point.z};
    return numberList(values);
}

// Of the vertices that facets name.
InfoRecord cornerExtent(const FacetArrays& arrays, int facets, LengthUnit unit) {
    Tuple3<float> least = arrays.vertices_[0];
    Tuple3<float> greatest = least;
    for (std::size_t corner = 0; corner < 3 * static_cast<std::size_t>(facets); ++corner) {
        const Tuple3<float>& p = arrays.vertices_[corner];
        least = {std::min(least.x, p.x), std::min(least.y, p.y), std::min(least.z, p.z)};
        greatest = {std::max(greatest.x, p.x), std::max(greatest.y, p.y), std::max(greatest.z, p.z)};
    }
    return {{lengthName("minimum", unit), pointRecord(least)}, {lengthName("maximum", unit), pointRecord(greatest)}};
}

InfoRecord statedBox(const VnlFile& geometry, LengthUnit unit) {
    constexpr std::size_t kLowCorner = 0;
    constexpr std::size_t kHighCorner = 6;
    const auto corner = [&](std::size_t i) {
        const Vector<float>& v = geometry.boundingBox()[i];
        return pointRecord({v.ElementAt(0), v.ElementAt(1), v.ElementAt(2)});
    };
    return {{lengthName("minimum", unit), corner(kLowCorner)}, {lengthName("maximum", unit), corner(kHighCorner)}};
}

// Radiances of a body: the extremes with their facets, the first of equal ones, which count from 1, and the mean.
InfoRecord limitsRecord(std::span<const float> values) {
    const auto least = std::ranges::min_element(values);
    const auto greatest = std::ranges::max_element(values);
    const double sum = std::accumulate(values.begin(), values.end(), 0.0);
    return {
        {"minimum_W_per_cm2_sr", shortestDouble(*least)},
        {"minimum_facet", least - values.begin() + 1},
        {"maximum_W_per_cm2_sr", shortestDouble(*greatest)},
        {"maximum_facet", greatest - values.begin() + 1},
        {"mean_W_per_cm2_sr", shortestDouble(static_cast<float>(sum / static_cast<double>(values.size())))},
    };
}
} // namespace

std::optional<Problem> describeGeometry(const std::string& path, LengthUnit unit, InfoRecord& record) {
    const std::optional<VnlFile::Counts> counts = VnlFile::readAnnouncedCounts(path);
    if (counts) {
        record["vertices"] = counts->vertices;
        record["facets"] = counts->facets;
        if (counts->facets < 0 || VnlFile::leastBytesOf(counts->facets) > std::filesystem::file_size(path))
            return "announces more or fewer facets than it can hold";
    }
    const int facets = counts ? counts->facets : 0;
    FacetArrays arrays;
    VnlFile geometry;
    if (!geometry.LoadAlone(path, facets, arrays))
        return kCannotBeRead;
    record["bounding_box"] = statedBox(geometry, unit);
    if (facets > 0)
        record["extent"] = cornerExtent(arrays, facets, unit);
    return std::nullopt;
}

std::optional<Problem> describeReflectance(const std::string& path, InfoRecord& record) {
    BrdfFile file;
    if (!file.Load(path))
        return kCannotBeRead;
    record["facets"] = file.numFacets();
    record["ranges"] = file.elements().size();
    InfoRecord& classes = record["classes"] = InfoRecord::array();
    for (std::size_t i = 0; i < file.classes().size(); ++i) {
        const BrdfClass& c = file.classes()[i];
        classes.push_back(
            {{"class", i + 1},
             {"facets", file.blocks()[i].facetCount_},
             {"diffuse_reflectance", shortestDouble(c.rho_d)},
             {"emissivity", shortestDouble(c.epsilon)},
             {"b", shortestDouble(c.b)},
             {"e", shortestDouble(c.e)},
             {"G", shortestDouble(c.G)},
             {"mode", c.mode}});
    }
    return std::nullopt;
}

std::optional<Problem> describeBodyRadiance(const std::string& path, InfoRecord& record) {
    const std::optional<std::int32_t> facets = RadFile::readAnnouncedFacets(path);
    if (!facets)
        return "is shorter than its header";
    record["facets"] = *facets;
    RadFile file;
    if (!file.Load(path, *facets))
        return kCannotBeRead;
    if (*facets > 0) {
        const auto count = static_cast<std::size_t>(*facets);
        record["radiance"] = limitsRecord({file.rad(), count});
        record["emittance"] = limitsRecord({file.bbe(), count});
    }
    return std::nullopt;
}

std::optional<Problem> describeFormFactors(const std::string& path, InfoRecord& record) {
    SubfacetFile file;
    if (!file.Load(path, {}, {}))
        return kCannotBeRead;
    std::size_t pairs = 0;
    for (std::size_t facet = 0; facet < file.facetCount(); ++facet)
        pairs += file.visibleFrom(facet).size();
    record["facets"] = file.facetCount();
    record["pairs"] = pairs;
    return std::nullopt;
}

std::optional<Problem> describeAtmosphere(const std::string& path, InfoRecord& record) {
    AtmFile file;
    if (!file.Load(path))
        return kCannotBeRead;
    const Vector<float> sun = file.SolarDirWorld();
    record["solar_zenith_deg"] = shortestDouble(file.solarZenith());
    record["solar_azimuth_deg"] = shortestDouble(file.solarAzimuth());
    record["solar_direction"] = pointRecord({sun.ElementAt(0), sun.ElementAt(1), sun.ElementAt(2)});
    record["direct_solar_W_per_cm2_sr"] = shortestDouble(file.directSolarRadiance());
    record["diffuse_sky_W_per_cm2_sr"] = shortestDouble(file.diffuseSkyRadiance());
    record["diffuse_earth_W_per_cm2_sr"] = shortestDouble(file.diffuseEarthRadiance());
    record["signature_bearing_deg"] = shortestDouble(file.signatureBearing());
    return std::nullopt;
}

std::optional<Problem> describeRotors(const std::string& path, LengthUnit unit, InfoRecord& record) {
    const Rotor file(path.c_str());
    InfoRecord& rotors = record["rotors"] = InfoRecord::array();
    for (int rotor = 1; rotor <= file.getRotorCount(); ++rotor)
        rotors.push_back(
            {{"rotor", rotor},
             {"first_facet", file.getRotorStart(rotor)},
             {"last_facet", file.getRotorEnd(rotor)},
             {lengthName("hub", unit), numberList(file.getRotorHub(rotor))},
             {"axis", numberList(file.getRotorAxis(rotor))},
             {"turns_per_s", shortestDouble(file.getRotorRate(rotor))}});
    return std::nullopt;
}
} // namespace sorvane
