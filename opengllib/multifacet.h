// What the facets of a body reflect of each other.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "vector.h"

class BrdfFile;
class SubfacetFile;

namespace sorvane {
// The radiance that a facet k reflects towards the eye is a sum over the facets j that k sees, its sources:
//     Σ f_r(class of k; normal of k, direction to j, direction to the eye) · π · form factor k to j · radiance of j
// f_r is a sum of terms. init works out what each term takes from the sources, update what it takes from the eye.
// A facet can't reflect more than its directional-hemispherical reflectance leaves, 1 - ε · dir(cosine to the eye) / G,
// but a narrow lobe that meets the middle of a large source, or one at a grazing eye, adds up to more. Where the
// weights f_r · π · form factor of a facet exceed it they are all scaled down to it; they are never scaled up.
class MultiFacet {
public:
    // `subfacets` must be initialised; normals, centroids and radiances are per facet in file order, as many as it has.
    void init(
        const SubfacetFile& subfacets, const BrdfFile& brdf, std::span<const Vector<float>> normals,
        std::span<const Vector<float>> centroids, std::span<const float> radiances);

    // Fills the reflected radiance of every facet, in the unit of the radiances, for an eye in model coordinates.
    void update(const Vector<float>& eye, std::span<float> radiances) const;

    // The same of one facet towards a unit direction of model coordinates, in which the eye is far away.
    float reflectedTowards(std::size_t facet, const Vector<float>& toViewer) const;

private:
    // A sum over sources: of the weights alone, and of the weights times the radiances.
    struct Sum {
        float weight = 0.0F;
        float radiance = 0.0F;

        void add(float addedWeight, float ofRadiance);
    };
    struct Facet {
        Vector<float> normal;
        Vector<float> centroid;
        float b = 0.0F;        // of its class
        float e2 = 0.0F;       // the square of its class's e
        float emission = 0.0F; // its class's emissivity over G
        Sum constant{};        // the terms without the eye
        Sum diffuse{};         // the terms that the eye enters as one common factor, without that factor
        std::size_t first = 0; // in Sources: those of the specular term, which the eye enters source by source
        std::size_t last = 0;  // one past them
    };

    // The sources of all facets, one facet after the other. Every property has an array of its own, so that the
    // compiler can work on kLanes sources at once; for its sake sources of weight 0 fill each facet's up to a
    // multiple of kLanes.
    static constexpr std::size_t kLanes = 8;
    struct Sources {
        std::vector<float> x, y, z;  // unit vector from the facet to the source
        std::vector<float> cosine;   // between that vector and the facet's normal
        std::vector<float> weight;   // what the lobe of the specular term is multiplied by, without the radiance
        std::vector<float> strength; // and with it

        void add(const Vector<float>& direction, float cosineToNormal, const Sum& factors);
    };

    float reflected(const Facet& facet, const Vector<float>& toViewer, float cosViewer) const;
    Sum specular(const Facet& facet, const Vector<float>& toViewer, float cosViewer) const;

    std::vector<Facet> facets_;
    Sources sources_;
};
} // namespace sorvane
