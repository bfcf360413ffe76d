// What the facets of a body reflect of each other.
#include "multifacet.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "brdffile.h"
#include "sandfordrobertson.h"
#include "subfacetfile.h"

namespace sorvane {
namespace {
// Small enough for the lobe to reach its largest value, as it does for a divisor of 0 or below.
constexpr float kSmallestDivisor = std::numeric_limits<float>::min();
// Below that of small_hcal, so that no sum of its squares overflows. Facets with such lobes reflect what their limit
// leaves, however large they are.
constexpr float kLargestLobeRoot = kSrLargestLobeRoot * 1e-4F;

float dot(const Vector<float>& u, const Vector<float>& v) {
    return u.ElementAt(0) * v.ElementAt(0) + u.ElementAt(1) * v.ElementAt(1) + u.ElementAt(2) * v.ElementAt(2);
}

// A facet without area has no finite cosine.
bool isSeen(float cosViewer) {
    return cosViewer > kSrHorizon;
}
} // namespace

// What has no weight adds nothing, of an infinite radiance either.
void MultiFacet::Sum::add(float addedWeight, float ofRadiance) {
    if (!(addedWeight > 0.0F))
        return;
    weight += addedWeight;
    radiance += addedWeight * ofRadiance;
}

void MultiFacet::Sources::add(const Vector<float>& direction, float cosineToNormal, const Sum& factors) {
    x.push_back(direction.ElementAt(0));
    y.push_back(direction.ElementAt(1));
    z.push_back(direction.ElementAt(2));
    cosine.push_back(cosineToNormal);
    weight.push_back(factors.weight);
    strength.push_back(factors.radiance);
}

void MultiFacet::init(
    const SubfacetFile& subfacets, const BrdfFile& brdf, std::span<const Vector<float>> normals,
    std::span<const Vector<float>> centroids, std::span<const float> radiances) {
    facets_.clear();
    sources_ = Sources();
    for (std::size_t k = 0; k < subfacets.facetCount(); ++k) {
        const int brdfClass = brdf.FacetIndxToBrdfClass(static_cast<int>(k));
        Facet facet{.normal = normals[k], .centroid = centroids[k], .first = sources_.x.size()};
        if (brdfClass >= 0) {
            const BrdfClass& surface = brdf.classes()[static_cast<std::size_t>(brdfClass)];
            facet.b = surface.b;
            facet.e2 = surface.e * surface.e;
            facet.emission = surface.epsilon / surface.G;
            for (const SubfacetFile::Visible& visible : subfacets.visibleFrom(k)) {
                const auto j = static_cast<std::size_t>(visible.facet);
                const Vector<float> apart = centroids[j] - centroids[k];
                const Vector<float> toSource = apart / Length(apart);
                const float cosSource = dot(facet.normal, toSource);
                const float share = std::numbers::pi_v<float> * visible.formFactor;
                const SourceTerms terms = sr_source_terms(surface, cosSource);
                facet.constant.add(share * terms.constant, radiances[j]);
                facet.diffuse.add(share * terms.diffuse, radiances[j]);
                Sum lobe;
                lobe.add(share * terms.specular, radiances[j]);
                if (lobe.weight > 0.0F)
                    sources_.add(toSource, cosSource, lobe);
            }
        }
        while (sources_.x.size() % kLanes != 0)
            sources_.add(facet.normal, 1.0F, {});
        facet.last = sources_.x.size();
        facets_.push_back(facet);
    }
}

void MultiFacet::update(const Vector<float>& eye, std::span<float> radiances) const {
    for (std::size_t k = 0; k < facets_.size(); ++k) {
        const Facet& facet = facets_[k];
        const Vector<float> toEye = eye - facet.centroid;
        const float distance = std::sqrt(dot(toEye, toEye));
        const float cosViewer = dot(facet.normal, toEye) / distance;
        radiances[k] = isSeen(cosViewer) ? reflected(facet, toEye / distance, cosViewer) : 0.0F;
    }
}

float MultiFacet::reflectedTowards(std::size_t facet, const Vector<float>& toViewer) const {
    const float cosViewer = dot(facets_[facet].normal, toViewer);
    return isSeen(cosViewer) ? reflected(facets_[facet], toViewer, cosViewer) : 0.0F;
}

float MultiFacet::reflected(const Facet& facet, const Vector<float>& toViewer, float cosViewer) const {
    const ViewerTerms viewer = sr_viewer_terms(facet.b, cosViewer);
    const double limit = 1.0 - static_cast<double>(facet.emission * viewer.diffuse);
    if (!(limit > 0.0))
        return 0.0F;
    const Sum lobes = facet.first < facet.last ? specular(facet, toViewer, cosViewer) : Sum();
    // In double precision, in which lobes at their largest don't overflow.
    const auto total = [&viewer](float constant, float diffuse, float specular) {
        return double{constant} + double{diffuse} * double{viewer.diffuse} + double{specular} * double{viewer.specular};
    };
    const double weight = total(facet.constant.weight, facet.diffuse.weight, lobes.weight);
    const double radiance = total(facet.constant.radiance, facet.diffuse.radiance, lobes.radiance);
    return static_cast<float>(weight > limit ? radiance * (limit / weight) : radiance);
}

// The sums of weight · small_hcal and of strength · small_hcal over the sources. With B the sum of the directions to
// source and viewer, which their bisector is a multiple of, the squared cosine between normal and bisector is c² / B²,
// c the sum of the two cosines; the lobe 1 / ((e² - 1) c² / B² + 1)² is then worked out with a single division.
MultiFacet::Sum MultiFacet::specular(const Facet& facet, const Vector<float>& toViewer, float cosViewer) const {
    const float viewerX = toViewer.ElementAt(0);
    const float viewerY = toViewer.ElementAt(1);
    const float viewerZ = toViewer.ElementAt(2);
    std::array<float, kLanes> weights{};
    std::array<float, kLanes> strengths{};
    for (std::size_t i = facet.first; i < facet.last; i += kLanes) {
        const float* const x = sources_.x.data() + i;
        const float* const y = sources_.y.data() + i;
        const float* const z = sources_.z.data() + i;
        const float* const cosine = sources_.cosine.data() + i;
        const float* const weight = sources_.weight.data() + i;
        const float* const strength = sources_.strength.data() + i;
        for (std::size_t lane = 0; lane < kLanes; ++lane) {
            const float bx = x[lane] + viewerX;
            const float by = y[lane] + viewerY;
            const float bz = z[lane] + viewerZ;
            const float b2 = bx * bx + by * by + bz * bz;
            const float c = cosine[lane] + cosViewer;
            const float c2 = std::min(c * c, b2);
            const float divisor = facet.e2 * c2 + (b2 - c2);
            const float lobe = std::min(b2 / std::max(divisor, kSmallestDivisor), kLargestLobeRoot);
            weights[lane] += weight[lane] * (lobe * lobe);
            strengths[lane] += strength[lane] * (lobe * lobe);
        }
    }
    Sum sum;
    for (std::size_t lane = 0; lane < kLanes; ++lane) {
        sum.weight += weights[lane];
        sum.radiance += strengths[lane];
    }
    return sum;
}
} // namespace sorvane
