#version 120
// The radiance that leaves a facet towards the eye, as a grey: its own, and what it reflects of the sun, the sky, the
// earth and the other facets by the Sandford-Robertson model.

uniform float DiffuseEarthRadiance; // W/cm2/sr
uniform float DiffuseSkyRadiance;   // W/cm2/sr
uniform float SolarBeam;            // what a white diffuse surface reflects that faces the sun, W/cm2/sr
uniform float Brightness;           // grey per W/cm2/sr
uniform vec3 SolarDirEyeCoords;     // unit direction to the sun, eye coordinates

// The reflectance class of the facet.
uniform float eps; // emissivity
uniform float rho; // diffuse reflectance
uniform float b;   // directional parameter of both
uniform float e;   // width of the specular lobe
uniform float G;   // normalisation that belongs to b
uniform int mode;  // 2: diffuse term only, 3: specular reflectance only, else all

varying vec3 eyePosition;
varying vec3 eyeNormal;
varying float ownRadiance;
varying float multiRadiance;
varying vec2 formFactors;

const float kThreshold = 1e-5;
const float kPi = 3.1415927;
const float kOneOverPi = 0.31830987;
const float kOneOverFourPi = 0.07957747;
const float kCos80 = 0.1736481;
const float kTan2Of80 = 32.163437;
const float kLargestLobe = 1.7e38;
const float kLargest = 1e30;

// How the emissivity falls towards grazing angles, relative to the normal direction.
float directional(float cosine) {
    if (!(b > 0.0))
        return 1.0;
    float cosine2 = cosine * cosine;
    return 1.0 / ((1.0 - cosine2) * (b * b) / cosine2 + 1.0);
}

// The normalisation of the specular lobe.
float bigH(float e2, float cosine) {
    float twice = 2.0 * e2;
    if (twice == 0.0)
        return 1.0;
    float rest = 1.0 - e2;
    float m = rest * rest * cosine * cosine + twice;
    float x = m + twice;
    if (!(x > 0.0))
        return 1.0;
    return (rest * cosine + m / sqrt(x)) / twice;
}

// The shape of the specular lobe.
float hcal(float cos2Glint, float e2) {
    float d = (e2 - 1.0) * cos2Glint + 1.0;
    if (!(d > 0.0))
        return kLargestLobe;
    return min(1.0 / (d * d), kLargestLobe);
}

// The reflectance distribution between two unit directions, 1/sr.
float brdf(vec3 normal, vec3 toSource, vec3 toViewer) {
    float cosSource = dot(normal, toSource);
    float cosViewer = dot(normal, toViewer);
    if (cosSource <= kThreshold || cosViewer <= kThreshold)
        return 0.0;

    // What is neither absorbed nor reflected diffusely is reflected specularly.
    float q = b > 0.0 ? directional(cosSource) / G : 1.0;
    float specularAlbedo = 1.0 - eps * q - rho * q;
    if (specularAlbedo < kThreshold)
        specularAlbedo = 0.0;
    if (mode == 3)
        return specularAlbedo;

    float viewerFactor = directional(cosViewer);
    float diffuse = b > 0.0 ? rho * q / (G * kPi) * viewerFactor : rho * kOneOverPi;
    if (mode == 2)
        return diffuse;

    float s = specularAlbedo * kOneOverFourPi;
    if (!(s > kThreshold))
        return diffuse + s;
    float e2 = e * e;
    float cosGlint = dot(normal, normalize(toSource + toViewer));
    float specular = s / (bigH(e2, cosSource) * cosViewer) * hcal(min(cosGlint * cosGlint, 1.0), e2);
    if (cosViewer < kCos80 && b > 0.0)
        specular *= viewerFactor * (b * b * kTan2Of80 + 1.0);
    return diffuse + specular;
}

// Infinite is as bright as can be, and what is not a number is dark.
float finite(float value) {
    return value >= kLargest ? kLargest : value > -kLargest ? value : 0.0;
}

void main() {
    vec3 normal = normalize(eyeNormal);
    vec3 toViewer = normalize(-eyePosition);
    float cosSun = max(dot(normal, SolarDirEyeCoords), 0.0);
    float cosViewer = max(dot(normal, toViewer), kThreshold);

    // Emitted, and reflected of what the signature computation took into account.
    float radiance = ownRadiance;
    // The sun's irradiance, pi * SolarBeam, spread over the facet by its slant.
    radiance += kPi * brdf(normal, SolarDirEyeCoords, toViewer) * cosSun * SolarBeam;
    // Sky and earth shine from all over the part of the hemisphere that the form factors tell; of that the
    // directional-hemispherical reflectance, 1 - directional emissivity, goes towards the eye.
    float reflectance = max(1.0 - eps * directional(cosViewer) / G, 0.0);
    radiance += (formFactors.x * DiffuseEarthRadiance + formFactors.y * DiffuseSkyRadiance) * reflectance;
    // Reflected of the other facets.
    radiance += multiRadiance;

    gl_FragColor = vec4(vec3(finite(radiance * Brightness)), 1.0);
}
