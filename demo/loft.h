// Closed surfaces spanned over a row of cross-sections: fuselages, nozzles, wings, blades.
#pragma once

#include <vector>

#include "mesh.h"

namespace sorvane {
// A closed ring of points and what the strip from it to the next ring, or to the tip behind the last, is made of.
struct Section {
    std::vector<Vec3d> ring;
    Part part;
};

// The surface from one tip over the sections to the other, facing outwards. All rings have as many points, run the same
// way round and start at corresponding points. A tip in the plane of its ring makes a flat end, a tip behind the next
// ring a hollow one. `firstPart` is what the end at the first tip is made of.
Mesh loft(const Vec3d& firstTip, Part firstPart, const std::vector<Section>& sections, const Vec3d& lastTip);

// A cross-section perpendicular to x: an ellipse, or with a squareness above 2 something nearer to its box.
struct Oval {
    double x = 0.0;
    double halfWidth = 0.0;
    double halfHeight = 0.0;
    Vec3d centre; // its x is added to `x`
    double squareness = 2.0;
    Part part;
};

// Puts `steps` - 1 ovals between each two, on a smooth curve through the given ones.
std::vector<Oval> smoothed(const std::vector<Oval>& ovals, int steps);

// The sections of ovals, each with as many points.
std::vector<Section> ovalSections(const std::vector<Oval>& ovals, int points);

// One end of a wing, a fin or a blade.
struct WingEnd {
    Vec3d leadingEdge;
    double chord = 0.0;     // backwards along x
    double thickness = 0.0; // greatest, as a fraction of the chord
};

// Between two ends in `spans` steps; 2 * `chordSteps` points around each section, which is a NACA four-digit symmetric
// one. `upwards` is the unit direction across the chord in which the sections are thick.
Mesh wing(const WingEnd& root, const WingEnd& tip, int spans, int chordSteps, const Vec3d& upwards, Part part);
} // namespace sorvane
