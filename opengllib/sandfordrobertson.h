// The Sandford–Robertson reflectance model of infrared signatures: a diffuse and a specular term whose weights follow a
// directional emissivity. After Sandford and Robertson, "Infrared reflectance properties of aircraft paints", 1985.
#pragma once

#include "vector.h"

struct BrdfClass;

// The reflectance distribution in 1/sr for light from `toSource` seen from `toViewer`, both of unit length with w = 0.
// `normal` is the unit normal of the surface and `glint_vec` the unit bisector of the two directions; a w other than 0
// of these two is a programming error, which is reported and ends the process. The parameters are a BrdfClass's. The
// result is 0 for a source or a viewer at the horizon or below it. Mode 2 gives the diffuse term alone, mode 3 the
// directional-hemispherical specular reflectance (without unit), every other mode both terms.
float sr_brdf_internal(
    int mode, const Vector<float>& normal, const Vector<float>& toSource, const Vector<float>& toViewer, float b,
    float e, float rho_d, float epsilon, float G, const Vector<float>& glint_vec);

// The normalisation of the specular lobe; e2 is e², cosIn2 is cosIn².
float sr_big_h(float e2, float cosIn, float cosIn2);

// The shape of the specular lobe; cos2Glint is the squared cosine between the normal and the bisector, e2 is e².
float small_hcal(float cos2Glint, float e2);

namespace sorvane {
// G of a surface: makes the directional term average to 1 over the hemisphere. b = 1 is deliberately not guarded: the
// formula has no value there, and G is then not finite.
float sr_normalisation(float b);

// The model with source and viewer apart, for surfaces that many sources light: with the cosines of both above
// kSrHorizon it is
//     source.constant + source.diffuse · viewer.diffuse + source.specular · viewer.specular · small_hcal
// up to rounding, else 0.
struct SourceTerms {
    float constant;
    float diffuse;
    float specular;
};
struct ViewerTerms {
    float diffuse;
    float specular;
};
constexpr float kSrHorizon = 1e-5F;                 // bit pattern 0x3727C5AC
constexpr float kSrLargestLobeRoot = 1.3038405e19F; // squared, the largest value of small_hcal

// All 0 for a source at the horizon or below it.
SourceTerms sr_source_terms(const BrdfClass& surface, float cosSource);
ViewerTerms sr_viewer_terms(float b, float cosViewer);
} // namespace sorvane
