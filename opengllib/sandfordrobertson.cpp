// The Sandford–Robertson reflectance model of infrared signatures.
#include "sandfordrobertson.h"

#include <algorithm>
#include <cmath>

#include "endprocess.h"
#include "printerror.h"

namespace {
constexpr int kDiffuseOnly = 2;
constexpr int kSpecularReflectanceOnly = 3;

constexpr float kPi = 3.1415927F;
constexpr float kOneOverPi = 0.31830987F;
constexpr float kOneOverFourPi = 0.07957747F;
constexpr float kThreshold = 1e-5F;  // bit pattern 0x3727C5AC
constexpr float kCos80 = 0.1736481F; // a viewer further off the normal sees the lobe corrected by the next
constexpr float kTan2Of80 = 32.163437F;
constexpr float kLargestLobe = 1.7e38F; // bit pattern 0x7EFFC99E

float dot(const Vector<float>& u, const Vector<float>& v) {
    return u.ElementAt(0) * v.ElementAt(0) + u.ElementAt(1) * v.ElementAt(1) + u.ElementAt(2) * v.ElementAt(2);
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
    printError(__FILE__, "sr_brdf_internal", __LINE__, "%s[3] should be 0 but is %f.", 2, name, static_cast<double>(w));
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

    const float cosSource = dot(normal, toSource);
    const float cosViewer = dot(normal, toViewer);
    if (cosSource <= kThreshold || cosViewer <= kThreshold)
        return 0.0F;

    const float q = b > 0.0F ? directional(b, cosSource) / G : 1.0F;
    float specularAlbedo = 1.0F - epsilon * q - rho_d * q;
    if (specularAlbedo < kThreshold)
        specularAlbedo = 0.0F;
    if (mode == kSpecularReflectanceOnly)
        return specularAlbedo;

    const float viewerFactor = b > 0.0F ? directional(b, cosViewer) : 1.0F;
    const float diffuse = b > 0.0F ? rho_d * q / (G * kPi) * viewerFactor : rho_d * kOneOverPi;
    if (mode == kDiffuseOnly)
        return diffuse;

    const float s = specularAlbedo * kOneOverFourPi;
    if (!(s > kThreshold))
        return diffuse + s;
    const float e2 = e * e;
    const float cosGlint = dot(normal, glint_vec);
    const float cos2Glint = std::min(cosGlint * cosGlint, 1.0F);
    float specular = s / (sr_big_h(e2, cosSource, cosSource * cosSource) * cosViewer) * small_hcal(cos2Glint, e2);
    if (cosViewer < kCos80 && b > 0.0F)
        specular = specular * viewerFactor * (b * b * kTan2Of80 + 1.0F);
    return diffuse + specular;
}
