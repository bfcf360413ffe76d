#version 120
// Hands a corner of a facet on to the fragments: where it is and what it emits and receives.
// Radiances lie far below 1 and would be clamped in the fixed colours, so they travel in varyings of their own.

attribute float facet_radiance_multi; // radiance reflected from the other facets, W/cm2/sr
attribute float earthFormFactor;      // form factor from the facet to the earth
attribute float skyFormFactor;        // form factor from the facet to the sky

varying vec3 eyePosition;    // eye coordinates
varying vec3 eyeNormal;      // eye coordinates, not of unit length
varying float ownRadiance;   // the facet's own radiance, W/cm2/sr
varying float multiRadiance; // W/cm2/sr
varying vec2 formFactors;    // to the earth, to the sky

const float kLargest = 1e30;

// What can be interpolated: infinite is as bright as can be, and what is not a number is dark.
float finite(float value) {
    return value >= kLargest ? kLargest : value > -kLargest ? value : 0.0;
}

void main() {
    eyePosition = vec3(gl_ModelViewMatrix * gl_Vertex);
    eyeNormal = gl_NormalMatrix * gl_Normal;
    ownRadiance = finite(gl_Color.r);
    multiRadiance = finite(facet_radiance_multi);
    formFactors = vec2(earthFormFactor, skyFormFactor);
    // The emittance goes through unused: the facet's own radiance holds its emission already.
    gl_FrontSecondaryColor = gl_SecondaryColor;
    gl_Position = ftransform();
}
