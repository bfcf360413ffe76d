// The static material sets of the line sets.
#pragma once

#include <array>

using Rgb = std::array<float, 3>;

// GL front-face material arrays and a current colour, set together before a line set is drawn.
struct LineMaterial {
    Rgb colour{};
    Rgb emission{};
    Rgb ambient{};
    Rgb specular{};
    Rgb diffuse{};
    float shininess = 0.0F;

    void apply() const;
};

extern const LineMaterial cyl_front_mat;   // target history: green
extern const LineMaterial threat_yellow;   // threat history
extern const LineMaterial threat_cyan;     // threat history of an engagement whose colour name is "cyan"
extern const LineMaterial flare_front_mat; // flare trails: red
extern const LineMaterial ret_front_mat;   // gyro reticle: grey
extern const LineMaterial grid_mat;        // reference grid: grey-blue
