// The Sandford–Robertson reflectance model of infrared signatures.
#include "sandfordrobertson.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "brdffile.h"
#include "endprocess.h"
#include "fail.h"

using namespace sorvane;

namespace {
constexpr int kDiffuseOnly = 2;
constexpr int kSpecularReflectanceOnly = 3;

constexpr float kPi = 3.1415927F;
constexpr float kOneOverPi = 0.31830987F;
constexpr float kOneOverFourPi = 0.07957747F;
constexpr float kThreshold = kSrHorizon;
constexpr float kCos80 = 0.1736481F; // a viewer further off the normal sees the lobe corrected by the next
constexpr float kTan2Of80 = 32.163437F;
constexpr float kLargestLobe = 1.7e38F; // bit pattern 0x7EFFC99E

// Four floats that are worked on at once; each is rounded as it would be by itself.
using Quad = float __attribute__((vector_size(16)));

Quad load(const Vector<float>& v) {
    static_assert(sizeof(Quad) == sizeof v);
    Quad components;
    std::memcpy(&components, &v, sizeof components);
    return components;
}

// The scalar products, x + y + z in this order, of u with three vectors; the last component is of no use.
Quad products(const Vector<float>& u, const Vector<float>& a, const Vector<float>& b, const Vector<float>& c) {
    const Quad ua = load(u) * load(a);
    const Quad ub = load(u) * load(b);
    const Quad uc = load(u) * load(c);
    const Quad xxyy = __builtin_shufflevector(ua, ub, 0, 4, 1, 5);
    const Quad zz = __builtin_shufflevector(ua, ub, 2, 6, 2, 6);
    const Quad x = __builtin_shufflevector(xxyy, uc, 0, 1, 4, 4);
    const Quad y = __builtin_shufflevector(xxyy, uc, 2, 3, 5, 5);
    const Quad z = __builtin_shufflevector(zz, uc, 0, 1, 6, 6);
    return x + y + z;
}

// How the emissivity falls towards grazing angles, relative to the normal direction.
float directional(float b, float cosine) {
    const float cosine2 = cosine * cosine;
    return 1.0F / ((1.0F - cosine2) * (b * b) / cosine2 + 1.0F);
}

void checkDirection(const char* name, const Vector<float>& direction) {
    const float w = direction.ElementAt(3);
    if (w == 0.0F)
        return;
    fail("sr_brdf_internal", "%s[3] should be 0 but is %f.", name, static_cast<double>(w));
    endProcess();
}
} // namespace

float sr_big_h(float e2, float cosIn, float cosIn2) {
    const float twice = 2.0F * e2;
    if (twice == 0.0F)
        return 1.0F;
    const float rest = 1.0F - e2;
    const float m = rest * rest * cosIn2 + twice;
    const float x = m + twice;
    if (!(x > 0.0F))
        return 1.0F;
    return (rest * cosIn + m / std::sqrt(x)) / twice;
}

float small_hcal(float cos2Glint, float e2) {
    const float d = (e2 - 1.0F) * cos2Glint + 1.0F;
    if (!(d > 0.0F))
        return kLargestLobe;
    const float reciprocal = 1.0F / d;
    return std::min(reciprocal * reciprocal, kLargestLobe);
}

float sr_brdf_internal(
    int mode, const Vector<float>& normal, const Vector<float>& toSource, const Vector<float>& toViewer, float b,
    float e, float rho_d, float epsilon, float G, const Vector<float>& glint_vec) {
    checkDirection("normal", normal);
    checkDirection("glint_vec", glint_vec);

    const Quad cosines = products(normal, toSource, toViewer, glint_vec);
    const float cosSource = cosines[0];
    const float cosViewer = cosines[1];
    if (cosSource <= kThreshold || cosViewer <= kThreshold)
        return 0.0F;

    // Source and viewer at once; 1 where the emissivity has no direction.
    const Quad squares = cosines * cosines;
    const float b2 = b * b;
    const Quad factors = b > 0.0F ? 1.0F / ((1.0F - squares) * b2 / squares + 1.0F) : Quad{1.0F, 1.0F, 1.0F, 1.0F};
    const float q = b > 0.0F ? factors[0] / G : 1.0F;
    const float viewerFactor = factors[1];
    float specularAlbedo = 1.0F - epsilon * q - rho_d * q;
    if (specularAlbedo < kThreshold)
        specularAlbedo = 0.0F;
    if (mode == kSpecularReflectanceOnly)
        return specularAlbedo;

    const float diffuse = b > 0.0F ? rho_d * q / (G * kPi) * viewerFactor : rho_d * kOneOverPi;
    if (mode == kDiffuseOnly)
        return diffuse;

    const float s = specularAlbedo * kOneOverFourPi;
    if (!(s > kThreshold))
        return diffuse + s;
    const float e2 = e * e;
    const float cos2Glint = std::min(squares[2], 1.0F);
    float specular = s / (sr_big_h(e2, cosSource, squares[0]) * cosViewer) * small_hcal(cos2Glint, e2);
    if (cosViewer < kCos80 && b > 0.0F)
        specular = specular * viewerFactor * (b2 * kTan2Of80 + 1.0F);
    return diffuse + specular;
}

namespace sorvane {
float sr_normalisation(float b) {
    if (!(b > 0.0F))
        return 1.0F;
    const float b2 = b * b;
    const float k = 1.0F / (1.0F - b2);
    return (2.0F * b2 * k * std::log(b) + 1.0F) * k;
}

SourceTerms sr_source_terms(const BrdfClass& surface, float cosSource) {
    if (!(cosSource > kThreshold))
        return {0.0F, 0.0F, 0.0F};
    const bool isDirectional = surface.b > 0.0F;
    const float q = isDirectional ? directional(surface.b, cosSource) / surface.G : 1.0F;
    float specularAlbedo = 1.0F - surface.epsilon * q - surface.rho_d * q;
    if (specularAlbedo < kThreshold)
        specularAlbedo = 0.0F;
    if (surface.mode == kSpecularReflectanceOnly)
        return {specularAlbedo, 0.0F, 0.0F};
    const float diffuse = isDirectional ? surface.rho_d * q / (surface.G * kPi) : surface.rho_d * kOneOverPi;
    if (surface.mode == kDiffuseOnly)
        return {0.0F, diffuse, 0.0F};
    const float s = specularAlbedo * kOneOverFourPi;
    if (!(s > kThreshold))
        return {s, diffuse, 0.0F};
    return {0.0F, diffuse, s / sr_big_h(surface.e * surface.e, cosSource, cosSource * cosSource)};
}

ViewerTerms sr_viewer_terms(float b, float cosViewer) {
    const float factor = b > 0.0F ? directional(b, cosViewer) : 1.0F;
    const float correction = cosViewer < kCos80 && b > 0.0F ? factor * (b * b * kTan2Of80 + 1.0F) : 1.0F;
    return {factor, correction / cosViewer};
}
} // namespace sorvane
