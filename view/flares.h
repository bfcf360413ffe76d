// The burning flares of a frame.
#pragma once

#include "framedepth.h"
#include "keyframe.h"
#include "lookat.h"
#include "projection.h"

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

// Draws what the slice shows of a frame's flares, with the slice's projection loaded. A flare is sized by the
// projection and viewport of `view`, in pixels of which each has `pixelRatio` of the viewport's to a side. Needs a
// current GL context.
void drawFlares(
    const QList<flareKeyframe>& flares, const LookAt& lookAt, const WindowTransform& view, const DepthSlice& slice,
    double pixelRatio);
} // namespace sorvane
