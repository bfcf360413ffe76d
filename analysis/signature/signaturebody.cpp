// A body as its signature is worked out of it: its facets, where they are and what they radiate.
#include "signaturebody.h"

#include <algorithm>
#include <cmath>

#include "facetarrays.h"
#include "fail.h"
#include "radfile.h"
#include "subfacetfile.h"
#include "vnlfile.h"

namespace sorvane {
namespace {
Vec3d pointOf(const Tuple3<float>& tuple) {
    return {tuple.x, tuple.y, tuple.z};
}

bool isFinite(const Vec3d& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

Vec3d areaOf(const std::array<Vec3d, 3>& corners) {
    return 0.5 * cross(corners[1] - corners[0], corners[2] - corners[0]);
}

// A matrix of OpenGL's order on a point, or without its translation on a direction.
Vec3d turned(const std::array<float, 16>& matrix, const Vec3d& v, double w) {
    const auto row = [&](std::size_t i) {
        return double{matrix[i]} * v.x + double{matrix[i + 4]} * v.y + double{matrix[i + 8]} * v.z +
               double{matrix[i + 12]} * w;
    };
    return {row(0), row(1), row(2)};
}
} // namespace

bool SignatureBody::load(const SignatureFiles& files) {
    *this = SignatureBody();
    if (read(files))
        return true;
    *this = SignatureBody();
    return false;
}

bool SignatureBody::read(const SignatureFiles& files) {
    if (!brdf_.Load(files.reflectance))
        return false;
    const int facetCount = brdf_.numFacets();
    const auto count = static_cast<std::size_t>(facetCount);
    FacetArrays arrays;
    if (!arrays.allocate(facetCount))
        return fail("Init", "Out of memory.");
    RadFile rad;
    VnlFile vnl;
    if (!rad.Load(files.radiance, facetCount) ||
        !vnl.Load(
            files.geometry, brdf_, rad, arrays.indices_.get(), arrays.vertices_.get(), arrays.normals_.get(),
            arrays.primaryColors_.get(), arrays.secondaryColors_.get(), arrays.facetCentroids_.get(),
            arrays.facetNormals_.get(), arrays.facetMap_.get()))
        return false;

    const std::span earth(arrays.earth_form_factors_.get(), count);
    const std::span sky(arrays.sky_form_factors_.get(), count);
    SubfacetFile subfacets;
    const bool hasFormFactors = subfacets.Load(SubfacetFile::pathBeside(files.geometry), earth, sky);
    if (hasFormFactors) {
        const std::span normals(arrays.facetNormals_.get(), count);
        if (!subfacets.Init(normals))
            return fail("Init", "Subfacet object initialization failed.");
        multiFacet_.emplace().init(
            subfacets, brdf_, normals, std::span(arrays.facetCentroids_.get(), count), std::span(rad.rad(), count));
    }

    facets_.resize(count);
    for (std::size_t k = 0; k < count; ++k) {
        Facet& facet = facets_[k];
        const std::size_t first = 3 * static_cast<std::size_t>(arrays.facetMap_[k]);
        for (std::size_t i = 0; i < 3; ++i) {
            const Tuple3<float>& normal = arrays.normals_[first + i];
            facet.corners[i] = pointOf(arrays.vertices_[first + i]);
            facet.normals[i] = {normal.x, normal.y, normal.z};
        }
        if (!std::ranges::all_of(facet.corners, isFinite))
            facet.corners = {};
        facet.area = areaOf(facet.corners);
        facet.radiance = rad.rad()[k];
        facet.surface = brdf_.FacetIndxToBrdfClass(static_cast<int>(k));
        if (hasFormFactors) {
            facet.earthFormFactor = earth[k];
            facet.skyFormFactor = sky[k];
        }
    }
    if (!files.rotors.empty()) {
        rotor_.emplace(files.rotors.c_str());
        for (int number = 1; number <= rotor_->getRotorCount(); ++number)
            if (rotor_->getRotorEnd(number) > facetCount)
                return fail(
                    "Init", "The rotor file \"%s\" turns facets that the body doesn't have.", files.rotors.c_str());
        asRead_ = facets_;
    }
    return true;
}

// Always from the facets as read, so that nothing adds up.
double SignatureBody::radius() const {
    double radius = 0.0;
    for (const Facet& facet : facets_)
        if (length(facet.area) > 0.0)
            for (const Vec3d& corner : facet.corners)
                radius = std::max(radius, length(corner));
    return radius;
}

void SignatureBody::turnRotors(float seconds) {
    if (!rotor_)
        return;
    facets_ = asRead_;
    for (int number = 1; number <= rotor_->getRotorCount(); ++number) {
        std::array<float, 16> matrix{};
        rotor_->getRotorMatrix(number, seconds, matrix.data());
        for (int k = rotor_->getRotorStart(number); k <= rotor_->getRotorEnd(number); ++k) {
            const Facet& still = asRead_[static_cast<std::size_t>(k - 1)];
            Facet& facet = facets_[static_cast<std::size_t>(k - 1)];
            for (std::size_t i = 0; i < 3; ++i) {
                const Vec3f& n = still.normals[i];
                const Vec3d normal = turned(matrix, {n.x, n.y, n.z}, 0.0);
                facet.corners[i] = turned(matrix, still.corners[i], 1.0);
                facet.normals[i] = {
                    static_cast<float>(normal.x), static_cast<float>(normal.y), static_cast<float>(normal.z)};
            }
            facet.area = areaOf(facet.corners);
        }
    }
}
} // namespace sorvane
