#version 120
// Terrain: the measured radiance, and what the material reflects of the sun, the sky and the lights.

uniform sampler2D sampler0;     // radiance map, W/cm2/sr
uniform float Brightness;       // what radiances are multiplied by for the picture
uniform float LightBrightness;  // 1 where materials reflect, else 0
uniform float SolarX, SolarY, SolarZ; // unit direction to the sun, world
uniform float sunVisible;       // 1 or 0, for sun and sky
uniform float DiffuseSkyRadiance;
uniform float SolarBeam; // what a white diffuse surface reflects that faces the sun, W/cm2/sr
uniform float intensity[64];
uniform vec4 light_pos_obj[64];
uniform int lightCount; // lights behind these are off

varying vec2 texel;
varying vec3 position;
varying vec3 normal;
varying float reflectance;

const float kLargest = 1e30;

// Infinite is as bright as can be, and what is not a number is dark.
float finite(float value) {
    return value >= kLargest ? kLargest : value > -kLargest ? value : 0.0;
}

void main() {
    float radiance = texture2D(sampler0, texel).r;
    float reflecting = LightBrightness * max(reflectance, 0.0);
    if (reflecting > 0.0) {
        vec3 up = normalize(normal);
        float incoming = sunVisible * (SolarBeam * max(dot(up, vec3(SolarX, SolarY, SolarZ)), 0.0) + DiffuseSkyRadiance);
        for (int i = 0; i < lightCount; ++i) {
            vec3 towards = light_pos_obj[i].xyz - position;
            float squared = max(dot(towards, towards), 1.0);
            incoming += intensity[i] * max(dot(up, towards), 0.0) / (squared * sqrt(squared));
        }
        radiance += reflecting * incoming;
    }
    gl_FragColor = vec4(vec3(finite(Brightness * radiance)), 1.0);
}
