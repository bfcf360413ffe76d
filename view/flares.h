// The burning flares of a frame.
#pragma once

#include "framedepth.h"
#include "keyframe.h"
#include "lookat.h"
#include "projection.h"
#include "sight.h"

namespace sorvane {
// How a flare shows on the screen.
struct FlareLook {
    float grey = 0.0F;
    float alpha = 0.0F;
    bool isSphere = false; // else a single point
};

// The look of a flare of brightness `scalar` (power per solid angle in any unit that the file uses) at `distance` from
// the eye whose unit sphere covers `projectedArea` square pixels: its irradiance E = 4π · scalar / distance² spread
// over the area of a sphere larger than a pixel, or a point of grey E whose alpha is the part of the pixel that it
// covers. Never NaN or infinite.
FlareLook flareLook(float scalar, double distance, double projectedArea);

struct FlareStyle {
    double pixelRatio = 1.0; // how many of the viewport's pixels a pixel of the view has to a side
    bool isRound = false;    // whether spheres have as many facets as make them round, or the usual few
};

// What a flare is measured by: the projection and viewport by which it has its size in pixels, and what they show.
struct FlareWindow {
    const WindowTransform& transform;
    const Sight& sight;
};

// Draws what slice and picture show of a frame's flares, with the slice's projection loaded. Needs a current GL
// context.
void drawFlares(
    const QList<flareKeyframe>& flares, const LookAt& lookAt, const FlareWindow& window, const DepthSlice& slice,
    const FlareStyle& style);
} // namespace sorvane
