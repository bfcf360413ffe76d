// What the facets of a body reflect of each other.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "vector.h"

class BrdfFile;
class SubfacetFile;

// For facet k, seen from the eye: the sum over the facets j that it sees of
//     f_r(class of k; normal of k, direction to j, direction to the eye) · π · form factor k to j · radiance of j.
// All that doesn't depend on the eye is worked out once.
class MultiFacet {
public:
    // `subfacets` must be initialised; normals, centroids and radiances are per facet in file order, as many as it has.
    void init(
        const SubfacetFile& subfacets, const BrdfFile& brdf, std::span<const Vector<float>> normals,
        std::span<const Vector<float>> centroids, std::span<const float> radiances);

    // Fills the reflected radiance of every facet, in the unit of the radiances, for an eye in model coordinates.
    void update(const Vector<float>& eye, std::span<float> reflected) const;

private:
    struct Facet {
        Vector<float> normal;
        Vector<float> centroid;
        float b = 0.0F;
        float e2 = 0.0F;
        float constant = 0.0F; // the parts of the sum that depend on the eye in no way,
        float diffuse = 0.0F;  // and by the viewer's directional factor only
        std::size_t first = 0; // the sources of the specular part
        std::size_t last = 0;
    };

    // One array for each property, so that several sources are worked on at once. Each facet's sources are filled up to
    // a multiple of kLanes with sources of no strength.
    static constexpr std::size_t kLanes = 8;
    struct Sources {
        std::vector<float> x, y, z; // unit direction to the source
        std::vector<float> cosine;  // to the facet's normal
        std::vector<float> strength;

        void add(const Vector<float>& direction, float cosineToNormal, float value);
    };

    float specular(const Facet& facet, const Vector<float>& toViewer, float cosViewer) const;

    std::vector<Facet> facets_;
    Sources sources_;
};
