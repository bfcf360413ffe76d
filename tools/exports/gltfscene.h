// Makes an engagement a glTF 2.0 scene that moves.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "bodymesh.h"
#include "glbdocument.h"
#include "measuredengagement.h"
#include "problem.h"

namespace sorvane {
struct GltfEngagement {
    std::string name;
    const MeasuredEngagement& flight;
    std::array<std::optional<BodyMesh>, 2> meshes; // of target and threat; a body without one still moves
};

// In the binary form. A root node turns the trajectory's axes (z down) into those of glTF (y up), one unit into metres;
// below it, in the trajectory's own units and axes and about the first position of the target, are a node for each
// body, which moves and turns, and one for each flare: a ball as large as its largest half axis, and of no size while
// it is out. The animation begins with the first sample. Vertices have the colour of the radiance that their facet
// sends out by itself, as the viewer shows it, and the radiance (_RADIANCE). Positions farther away than 10¹² units are
// left out. When nothing is left, or more than the form can hold, that is the problem.
Outcome<GlbDocument> sceneOf(const GltfEngagement& engagement);
} // namespace sorvane
