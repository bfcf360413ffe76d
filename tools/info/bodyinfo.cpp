// Describes the files of a body, each by itself.
#include "bodyinfo.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <numeric>

#include "atmfile.h"
#include "brdffile.h"
#include "facetarrays.h"
#include "inputfile.h"
#include "radfile.h"
#include "rotor.h"
#include "shortestnumber.h"
#include "subfacetfile.h"
#include "vnlfile.h"

namespace {
constexpr const char* kCannotBeRead = "can't be read";

struct GeometryCounts {
    int vertices = 0;
    int facets = 0;
};

// What line 1 announces; nothing where the loader will find it malformed.
std::optional<GeometryCounts> readGeometryCounts(const std::string& path) {
    constexpr std::size_t kLineBytes = 255;
    const std::optional<std::string> line = readInputFile(path, kLineBytes);
    GeometryCounts counts;
    if (!line || std::sscanf(line->c_str(), "%d %d", &counts.vertices, &counts.facets) < 2)
        return std::nullopt;
    return counts;
}

// A geometry is loaded against a body's other files. These stand in for them: one class, radiances of 0.
struct StandIns {
    BrdfFile reflectance;
    RadFile radiance;
    FacetArrays arrays;

    bool make(int facets) {
        std::string text = "BRDF\n1\n0 0 0 0 0 x\n";
        if (facets > 0)
            text += "1 " + std::to_string(facets) + " 1 x\n";
        constexpr std::size_t kCountOffset = 40;
        std::string bytes(84 + 8 * static_cast<std::size_t>(facets), '\0');
        std::memcpy(bytes.data() + kCountOffset, &facets, sizeof facets);
        return reflectance.parse(text) && radiance.parse(bytes, facets) && arrays.allocate(facets);
    }

    bool load(const std::string& path, VnlFile& geometry) {
        return geometry.Load(
            path, reflectance, radiance, arrays.indices_.get(), arrays.vertices_.get(), arrays.normals_.get(),
            arrays.primaryColors_.get(), arrays.secondaryColors_.get(), arrays.facetCentroids_.get(),
            arrays.facetNormals_.get(), arrays.facetMap_.get());
    }
};

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

// Radiances of a body: the extremes with their facets, which count from 1, and the mean.
InfoRecord limitsRecord(std::span<const float> values) {
    const auto [least, greatest] = std::ranges::minmax_element(values);
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

InfoFault describeGeometry(const std::string& path, LengthUnit unit, InfoRecord& record) {
    constexpr std::uintmax_t kShortestFacetLine = 9; // "1 1 1 1 x", and the last one may lack its line feed
    const std::optional<GeometryCounts> counts = readGeometryCounts(path);
    if (counts) {
        record["vertices"] = counts->vertices;
        record["facets"] = counts->facets;
        if (counts->facets < 0 ||
            static_cast<std::uintmax_t>(counts->facets) > std::filesystem::file_size(path) / kShortestFacetLine)
            return "announces more or fewer facets than it can hold";
    }
    const int facets = counts ? counts->facets : 0;
    StandIns standIns;
    VnlFile geometry;
    if (!standIns.make(facets) || !standIns.load(path, geometry))
        return kCannotBeRead;
    record["bounding_box"] = statedBox(geometry, unit);
    if (facets > 0)
        record["extent"] = cornerExtent(standIns.arrays, facets, unit);
    return std::nullopt;
}

InfoFault describeReflectance(const std::string& path, InfoRecord& record) {
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

InfoFault describeBodyRadiance(const std::string& path, InfoRecord& record) {
    constexpr std::size_t kCountOffset = 40;
    std::int32_t facets = 0;
    const std::optional<std::string> head = readInputFile(path, kCountOffset + sizeof facets);
    if (!head || head->size() < kCountOffset + sizeof facets)
        return "is shorter than its header";
    std::memcpy(&facets, head->data() + kCountOffset, sizeof facets);
    record["facets"] = facets;
    RadFile file;
    if (!file.Load(path, facets))
        return kCannotBeRead;
    if (facets > 0) {
        const auto count = static_cast<std::size_t>(facets);
        record["radiance"] = limitsRecord({file.rad(), count});
        record["emittance"] = limitsRecord({file.bbe(), count});
    }
    return std::nullopt;
}

InfoFault describeFormFactors(const std::string& path, InfoRecord& record) {
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

InfoFault describeAtmosphere(const std::string& path, InfoRecord& record) {
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

InfoFault describeRotors(const std::string& path, LengthUnit unit, InfoRecord& record) {
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
