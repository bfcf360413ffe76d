// Draws the scene into a picture without a window.
#include "scenepicture.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>

#include "glentrypoints.h"
#include "projection.h"

namespace {
struct OffscreenContext {
    QOffscreenSurface surface;
    QOpenGLContext context;

    OffscreenContext() {
        surface.create();
        if (!context.create() || !context.makeCurrent(&surface) || !loadGlEntryPoints())
            qFatal("no OpenGL");
    }
};
} // namespace

QImage drawScene(
    const std::vector<SceneEngagement>& engagements, const Camera& camera, const SceneOptions& options, int width,
    int height, double fieldOfViewDegrees) {
    const OffscreenContext offscreen;
    QOpenGLFramebufferObject target(width, height, QOpenGLFramebufferObject::Depth);
    target.bind();
    setUpScene();
    applyProjection(fieldOfViewDegrees, width, height);
    clearFrame();
    Scene scene;
    scene.draw(engagements, camera, options);
    return target.toImage().convertToFormat(QImage::Format_RGB32);
}
