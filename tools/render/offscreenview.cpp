// The viewer's view without its window: engagements, a camera and the drawing of a frame.
#include "offscreenview.h"

#include "camerasubject.h"
#include "projection.h"

namespace sorvane {
namespace {
Vector<float> point(const float (&xyz)[3]) {
    return {xyz[0], xyz[1], xyz[2], 1.0F};
}
} // namespace

OffscreenView::OffscreenView(QSize size) : size_(size), context_(size.width(), size.height()) {
    if (!problem())
        setUpScene();
}

OffscreenView::~OffscreenView() = default;

LoaderOutcome OffscreenView::add(std::unique_ptr<etxyz> engagement, bool withTerrain) {
    if (withTerrain)
        engagement->keyframeAtZero(); // the terrain's height is that sample's; made now, it counts from the first frame
    else
        engagement->terrain.reset(); // loading it takes longer than all the rest
    LoaderOutcome outcome = runLoader([&] { engagement->InitHardbodies(); });
    if (outcome.hasReturned()) {
        shown_.push_back({newEngagementId(), engagement.get()});
        engagements_.push_back(std::move(engagement));
    }
    return outcome;
}

Camera OffscreenView::cameraAt(double time, const CameraChoice& choice, std::size_t followed) const {
    Camera camera;
    camera.setMode(choice.mode);
    if (choice.mode == ViewFree) {
        camera.place(point(choice.eye), point(choice.lookAt));
        return camera;
    }
    const CameraSubject subject = subjectAt(*engagements_.at(followed), time);
    camera.reset(subject);
    camera.follow(subject, subject);
    return camera;
}

QImage OffscreenView::draw(const SceneOptions& options, const CameraChoice& choice, std::size_t followed) {
    applyProjection(
        choice.mode == ViewGyro ? double{engagements_.at(followed)->fieldOfView} : kDefaultFieldOfViewDegrees,
        size_.width(), size_.height());
    scene_.draw(shown_, cameraAt(options.time, choice, followed), options);
    return context_.picture();
}
} // namespace sorvane
