// Draws the scene into pictures without a window.
#pragma once

#include <memory>

#include <QImage>

#include "scene.h"

namespace sorvane {
// A camera of the free view.
inline Camera cameraAt(const Vector<float>& eye, const Vector<float>& centre) {
    Camera camera;
    camera.setMode(ViewFree);
    camera.place(eye, centre);
    return camera;
}

// An offscreen GL context with a scene in it. What needs the context, initialised bodies for one, must end before it.
class OffscreenScene {
public:
    OffscreenScene(int width = 200, int height = 150);
    ~OffscreenScene();
    OffscreenScene(const OffscreenScene&) = delete;
    OffscreenScene& operator=(const OffscreenScene&) = delete;

    // Draws the engagements with the scene's own code; the framebuffer's pixels, top row first. The context is current
    // from the construction on.
    QImage draw(
        const std::vector<SceneEngagement>& engagements, const Camera& camera, const SceneOptions& options,
        double fieldOfViewDegrees = 30.0);

    // As Scene::forget.
    void forget(EngagementId id) { scene_->forget(id); }

private:
    struct Context;
    std::unique_ptr<Context> context_;
    std::unique_ptr<Scene> scene_;
};
} // namespace sorvane
