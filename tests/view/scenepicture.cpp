// Draws the scene into pictures without a window.
#include "scenepicture.h"

#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>

#include "glentrypoints.h"
#include "projection.h"

namespace sorvane {

struct OffscreenScene::Context {
    QOffscreenSurface surface;
    QOpenGLContext context;
    std::unique_ptr<QOpenGLFramebufferObject> target;

    Context(int width, int height) {
        surface.create();
        if (!context.create() || !context.makeCurrent(&surface) || !loadGlEntryPoints())
            qFatal("no OpenGL");
        target = std::make_unique<QOpenGLFramebufferObject>(width, height, QOpenGLFramebufferObject::Depth);
    }
};

OffscreenScene::OffscreenScene(int width, int height)
    : context_(std::make_unique<Context>(width, height)), scene_(std::make_unique<Scene>()) {}

OffscreenScene::~OffscreenScene() = default;

QImage OffscreenScene::draw(
    const std::vector<SceneEngagement>& engagements, const Camera& camera, const SceneOptions& options,
    double fieldOfViewDegrees) {
    QOpenGLFramebufferObject& target = *context_->target;
    target.bind();
    applyProjection(fieldOfViewDegrees, target.width(), target.height());
    setUpScene(); // places the light by the model-view matrix
    scene_->draw(engagements, camera, options);
    return target.toImage().convertToFormat(QImage::Format_RGB32);
}
} // namespace sorvane
