// Draws the scene into a picture without a window.
#pragma once

#include <QImage>

#include "scene.h"

// The framebuffer's pixels, top row first, after drawing the engagements with the scene's own code in an offscreen GL
// context. Sizes in pixels.
QImage drawScene(
    const std::vector<SceneEngagement>& engagements, const Camera& camera, const SceneOptions& options, int width = 200,
    int height = 150, double fieldOfViewDegrees = 30.0);
