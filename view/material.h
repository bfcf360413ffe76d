// The static material sets of the line sets.
#pragma once

#include <array>

class etxyz;

namespace sorvane {
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
} // namespace sorvane

extern const sorvane::LineMaterial cyl_front_mat; // target history: green
namespace sorvane {
extern const LineMaterial threat_yellow; // threat history
extern const LineMaterial threat_cyan;   // threat history of an engagement whose colour name is "cyan"
const LineMaterial& threatMaterial(const etxyz& engagement);
} // namespace sorvane

extern const sorvane::LineMaterial flare_front_mat; // flare trails: red
extern const sorvane::LineMaterial ret_front_mat;   // gyro reticle: grey
namespace sorvane {
extern const LineMaterial grid_mat; // reference grid: grey-blue
} // namespace sorvane
