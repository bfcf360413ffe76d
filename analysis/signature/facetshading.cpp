// What the facets of a body send out towards a direction, split by where it comes from.
#include "facetshading.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sorvane {
namespace {
constexpr float kPi = std::numbers::pi_v<float>;
constexpr float kFlat = 0.002F;         // radians between the corners' normals that change nothing
constexpr float kPatchesPerLobe = 4.0F; // of a lobe's half width, which is about e
constexpr float kNarrowestLobe = 0.02F; // narrower ones are rare, and blurred by the facets
constexpr float kWideLobe = 0.25F; // that of diffuse reflection and of emissivity, which fall off towards the horizon
constexpr std::size_t kMostDivisions = 12; // of an edge

// As the shader does: infinite is as bright as can be, and what is not a number is dark.
double finite(float value) {
    constexpr float kLargest = 1e30F;
    return std::isnan(value) ? 0.0 : double{std::clamp(value, -kLargest, kLargest)};
}

float angleBetween(const Vec3f& a, const Vec3f& b) {
    return 2.0F * std::asin(std::min(0.5F * length(a - b), 1.0F)); // of unit vectors, and near 0 for close ones
}

Vec3f unitOrZero(const Vec3f& v) {
    const float norm = length(v);
    return norm > 0.0F && std::isfinite(norm) ? 1.0F / norm * v : Vec3f();
}
} // namespace

FacetShading::FacetShading(const SignatureBody& body, const SignatureLight& light)
    : body_(body), light_(light), toSun_{
                                      static_cast<float>(light.toSun.x), static_cast<float>(light.toSun.y),
                                      static_cast<float>(light.toSun.z)} {
    for (const SignatureBody::Facet& facet : body.facets()) {
        starts_.push_back(patches_.size());
        if (facet.surface < 0)
            continue;
        const std::size_t n = divisionsOf(facet);
        // The middles of the n² triangles into which lines parallel to the edges divide the facet.
        const auto add = [&](std::size_t i, std::size_t j, float inset) {
            const float v = (static_cast<float>(i) + inset) / static_cast<float>(n);
            const float w = (static_cast<float>(j) + inset) / static_cast<float>(n);
            patches_.push_back(
                patchOf(facet, (1.0F - v - w) * facet.normals[0] + v * facet.normals[1] + w * facet.normals[2]));
        };
        for (std::size_t i = 0; i < n; ++i)
            for (std::size_t j = 0; i + j < n; ++j) {
                add(i, j, 1.0F / 3.0F);
                if (i + j + 1 < n)
                    add(i, j, 2.0F / 3.0F);
            }
    }
    starts_.push_back(patches_.size());
}

std::size_t FacetShading::divisionsOf(const SignatureBody::Facet& facet) const {
    std::array<Vec3f, 3> normals;
    std::ranges::transform(facet.normals, normals.begin(), unitOrZero);
    const float spread = std::max(
        {angleBetween(normals[0], normals[1]), angleBetween(normals[1], normals[2]),
         angleBetween(normals[2], normals[0])});
    if (!(spread > kFlat))
        return 1;
    const bool hasGlint = light_.solarBeam != 0.0F && toSun_ != Vec3f();
    const float lobe = hasGlint ? std::clamp(body_.surfaceOf(facet).e, kNarrowestLobe, kWideLobe) : kWideLobe;
    return std::min(static_cast<std::size_t>(1.0F + kPatchesPerLobe * spread / lobe), kMostDivisions);
}

FacetShading::Patch FacetShading::patchOf(const SignatureBody::Facet& facet, const Vec3f& normal) const {
    Patch patch{unitOrZero(normal), {}, 0.0F};
    patch.cosSun = dot(patch.normal, toSun_);
    patch.sunTerms = sr_source_terms(body_.surfaceOf(facet), patch.cosSun);
    return patch;
}

SignatureParts FacetShading::towards(std::size_t k, const Vec3f& viewer) const {
    const SignatureBody::Facet& facet = body_.facets()[k];
    SignatureParts parts;
    parts.own = finite(facet.radiance);
    if (facet.surface < 0)
        return parts;
    const BrdfClass& surface = body_.surfaceOf(facet);
    const float e2 = surface.e * surface.e;
    const float around = facet.earthFormFactor * light_.earthRadiance + facet.skyFormFactor * light_.skyRadiance;
    const float halfWay = length(toSun_ + viewer);
    float sun = 0.0F;
    float reflectance = 0.0F;
    for (std::size_t i = starts_[k]; i < starts_[k + 1]; ++i) {
        const Patch& patch = patches_[i];
        const float cosViewer = dot(patch.normal, viewer);
        const ViewerTerms terms = sr_viewer_terms(surface.b, std::max(cosViewer, kSrHorizon));
        // Of the hemisphere's radiance the directional-hemispherical reflectance goes towards the viewer.
        reflectance += std::max(1.0F - surface.epsilon * terms.diffuse / surface.G, 0.0F);
        if (!(patch.cosSun > kSrHorizon) || !(cosViewer > kSrHorizon))
            continue;
        const float cosGlint = halfWay > 0.0F ? (patch.cosSun + cosViewer) / halfWay : 0.0F;
        const float lobe = small_hcal(std::min(cosGlint * cosGlint, 1.0F), e2);
        const float brdf = patch.sunTerms.constant + patch.sunTerms.diffuse * terms.diffuse +
                           patch.sunTerms.specular * terms.specular * lobe;
        sun += brdf * patch.cosSun;
    }
    const auto patches = static_cast<float>(starts_[k + 1] - starts_[k]);
    // The sun's irradiance is pi times the beam.
    parts.sun = finite(kPi * sun / patches * light_.solarBeam);
    parts.skyAndEarth = finite(around * reflectance / patches);
    if (const MultiFacet* const others = body_.multiFacet())
        parts.otherFacets = finite(others->reflectedTowards(k, {viewer.x, viewer.y, viewer.z, 0.0F}));
    return parts;
}
} // namespace sorvane
