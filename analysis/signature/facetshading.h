// What the facets of a body send out towards a direction, split by where it comes from.
#pragma once

#include <cstddef>
#include <vector>

#include "sandfordrobertson.h"
#include "signaturebody.h"

namespace sorvane {
// The light in which a body stands: radiances in W/cm²/sr of an atmosphere file.
struct SignatureLight {
    float earthRadiance = 0.0F;
    float skyRadiance = 0.0F;
    float solarBeam = 0.0F; // what a white diffuse surface reflects that faces the sun
    Vec3d toSun;            // unit, in model axes; 0 without a sun
};

// Any one quantity by where it comes from.
struct SignatureParts {
    double own = 0.0;
    double sun = 0.0;
    double skyAndEarth = 0.0;
    double otherFacets = 0.0;

    double total() const { return own + sun + skyAndEarth + otherFacets; }
};

// The radiances that the shader of bodies gives a fragment, as means over whole facets. Normals are interpolated
// between the corners; where that changes the reflection within a facet, the facet is divided the more finely, the
// narrower the lobe.
class FacetShading {
public:
    // Keeps a reference to the body, which must stay as it is.
    FacetShading(const SignatureBody& body, const SignatureLight& light);

    // Radiances in W/cm²/sr of facet `k` towards a unit direction of model axes; never infinite or NaN.
    SignatureParts towards(std::size_t k, const Vec3f& viewer) const;

private:
    // A part of a facet; all of a facet's are equally large.
    struct Patch {
        Vec3f normal; // unit
        SourceTerms sunTerms{};
        float cosSun = 0.0F;
    };
    std::size_t divisionsOf(const SignatureBody::Facet& facet) const;
    Patch patchOf(const SignatureBody::Facet& facet, const Vec3f& normal) const;

    const SignatureBody& body_;
    SignatureLight light_;
    Vec3f toSun_;
    std::vector<Patch> patches_;      // facet after facet
    std::vector<std::size_t> starts_; // where each facet's begin, and the end
};
} // namespace sorvane
