// The static material sets of the line sets.
#pragma once

#include <array>

using Rgb = std::array<float, 3>;

// GL front-face material arrays and a current colour, set together before a line set is drawn.
struct Material {
    Rgb colour{};
    Rgb emission{};
    Rgb ambient{};
    Rgb specular{};
    Rgb diffuse{};
    float shininess = 0.0F;

    void apply() const;
};

extern const Material cyl_front_mat;   // target history: green
extern const Material threat_yellow;   // threat history
extern const Material threat_cyan;     // threat history of an engagement whose colour name is "cyan"
extern const Material flare_front_mat; // flare trails: red
extern const Material ret_front_mat;   // gyro reticle: grey
extern const Material grid_mat;        // reference grid: grey-blue
