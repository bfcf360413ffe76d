// A body as its signature is worked out of it: its facets, where they are and what they radiate. Needs no OpenGL.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "brdffile.h"
#include "multifacet.h"
#include "rotor.h"
#include "vec3.h"

namespace sorvane {
using Vec3f = Vec3<float>;

// Paths. The form factors lie beside the geometry, as for a body that is drawn.
struct SignatureFiles {
    std::string reflectance{};
    std::string geometry{};
    std::string radiance{};
    std::string rotors{}; // empty without any
};

// Lengths are in the file's unit, radiances in W/cm²/sr, axes the model's: x forward, y left, z up.
class SignatureBody {
public:
    struct Facet {
        std::array<Vec3d, 3> corners;
        std::array<Vec3f, 3> normals; // of the corners, as the file gives them
        Vec3d area;            // along the normal that the order of the corners gives, as long as the facet is large
        float radiance = 0.0F; // its own
        float earthFormFactor = 1.0F;
        float skyFormFactor = 1.0F;
        int surface = -1; // its reflectance class, by number
    };

    // Reads the files as a body that is drawn does, with the same messages. False, and without facets, when one that
    // must be there can't be used. A facet with a corner that is nowhere has no area.
    bool load(const SignatureFiles& files);

    // As the rotors stand after so many seconds. What facets reflect of each other stays as at rest, since the form
    // factors are those of the body at rest.
    void turnRotors(float seconds);

    std::span<const Facet> facets() const { return facets_; }
    // Of the sphere about the origin that holds every facet that has an area.
    double radius() const;
    const BrdfClass& surfaceOf(const Facet& facet) const {
        return brdf_.classes()[static_cast<std::size_t>(facet.surface)];
    }
    // Null where facets don't reflect each other.
    const MultiFacet* multiFacet() const { return multiFacet_ ? &*multiFacet_ : nullptr; }

private:
    bool read(const SignatureFiles& files);

    BrdfFile brdf_;
    std::optional<MultiFacet> multiFacet_;
    std::optional<Rotor> rotor_;
    std::vector<Facet> facets_; // in file order
    std::vector<Facet> asRead_; // the same with the rotors at rest; empty without rotors
};
} // namespace sorvane
