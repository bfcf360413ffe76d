// The burning flares of a frame.
#include "flares.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "glapi.h"
#include "glstate.h"
#include "matrix.h"
#include "sphere.h"

namespace sorvane {
namespace {
// The area in square pixels that the unit sphere about the origin of the current model-view matrix covers, taken from
// how far one pixel to the right reaches at its depth; a pixel has `pixelRatio` of the viewport's to a side. 0 when it
// can't be projected.
double projectedUnitSphereArea(const WindowTransform& view, double pixelRatio) {
    GLdouble modelView[16];
    glGetDoublev(GL_MODELVIEW_MATRIX, modelView);
    GLdouble window[3];
    GLdouble local[3];
    if (gluProject(0.0, 0.0, 0.0, modelView, view.projection, view.viewport, &window[0], &window[1], &window[2]) !=
            GL_TRUE ||
        gluUnProject(
            window[0] + pixelRatio, window[1], window[2], modelView, view.projection, view.viewport, &local[0],
            &local[1], &local[2]) != GL_TRUE)
        return 0.0;
    const double pixelsPerUnit = 1.0 / std::hypot(local[0], local[1], local[2]);
    const double area = std::numbers::pi * pixelsPerUnit * pixelsPerUnit;
    return std::isfinite(area) ? area : 0.0;
}

// Enough for a sphere of that area that its outline is nowhere a tenth of a pixel off.
int slicesOfRound(double projectedArea) {
    constexpr double kSlicesPerRootOfRadius = 7.1;
    constexpr double kMost = 128.0;
    const double radius = std::sqrt(projectedArea / std::numbers::pi);
    return static_cast<int>(std::clamp(kSlicesPerRootOfRadius * std::sqrt(radius), double{kCoarseSlices}, kMost));
}

float colourComponent(double value) {
    return std::isnan(value) ? 0.0F : static_cast<float>(std::clamp(value, 0.0, 1.0));
}
} // namespace

FlareLook flareLook(float scalar, double distance, double projectedArea) {
    const double irradiance = 4.0 * std::numbers::pi * scalar / (distance * distance);
    if (projectedArea > 1.0)
        return {colourComponent(irradiance / projectedArea), 1.0F, true};
    return {colourComponent(irradiance), colourComponent(projectedArea), false};
}

void drawFlares(
    const QList<flareKeyframe>& flares, const LookAt& lookAt, const FlareWindow& window, const DepthSlice& slice,
    const FlareStyle& style) {
    for (const flareKeyframe& flare : flares) {
        const double depth = lookAt.depthOf(flare.pos);
        const auto [least, greatest] = std::ranges::minmax(flare.intensity);
        const double radius = std::max(-least, greatest);
        if (!slice.reaches({depth - radius, depth + radius}) || !window.sight.reaches(flare.pos, radius))
            continue;
        const PushedAttributes attributes(GL_CURRENT_BIT | GL_LIGHTING_BIT | GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT);
        const PushedMatrix matrix;
        lookAt.load(flare.pos);
        glDisable(GL_LIGHTING);
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        // The band intensities deliberately serve as the sphere's three radii.
        const Matrix<float> model = BuildTransform(
            flare.intensity[0], flare.intensity[1], flare.intensity[2], flare.values[0], flare.values[1],
            flare.values[2], 0.0F, 0.0F, 0.0F);
        glMultMatrixf(model.data());
        const double distance = Length(Vector<float>(flare.pos[0], flare.pos[1], flare.pos[2], 1.0F) - lookAt.eye());
        const double area = projectedUnitSphereArea(window.transform, style.pixelRatio);
        const FlareLook look = flareLook(flare.scalar, distance, area);
        glColor4f(look.grey, look.grey, look.grey, look.alpha);
        if (look.isSphere) {
            drawUnitSphere(style.isRound ? slicesOfRound(area * style.pixelRatio * style.pixelRatio) : kCoarseSlices);
        } else if (slice.owns(depth)) { // blended twice it would be too bright
            glBegin(GL_POINTS);
            glVertex3f(0.0F, 0.0F, 0.0F);
            glEnd();
        }
    }
}
} // namespace sorvane
