#version 120
// Terrain: places a post and finds its texel from where it lies in the world.

uniform float a0, a1, a2; // x = a1 * column + a2 * row + a0
uniform float b0, b1, b2; // y = b1 * column + b2 * row + b0
uniform float width, height;

varying vec2 texel;
varying vec3 position; // world, as the normal
varying vec3 normal;
varying float reflectance; // of the material; below 0 there is none

// A reflectance that is not a number, as a spectrum without points in the band has, counts as 0. Compared with what none
// falls below: compilers make minima and maxima of comparisons with 0, and those let it through.
float number(float value) {
    return value > -1e30 ? value : 0.0;
}

void main() {
    vec2 offset = gl_Vertex.xy - vec2(a0, b0);
    float det = a1 * b2 - a2 * b1;
    vec2 post = vec2(b2 * offset.x - a2 * offset.y, a1 * offset.y - b1 * offset.x) / det;
    texel = (post + 0.5) / vec2(width, height); // a sample is a texel's centre
    position = gl_Vertex.xyz;
    normal = gl_Normal;
    reflectance = number(gl_Color.r);
    gl_Position = ftransform();
}
