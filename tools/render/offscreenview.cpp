// The viewer's view without its window: engagements, a camera and the drawing of a frame.
#include "offscreenview.h"

#include <functional>
#include <utility>

#include "camerasubject.h"
#include "overview.h"
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

std::vector<LoadedPart> OffscreenView::add(std::unique_ptr<etxyz> engagement, bool withTerrain) {
    std::vector<LoadedPart> parts;
    // Answers whether loading can go on.
    const auto load = [&](std::string name, const std::function<bool()>& loader) {
        LoadedPart& part = parts.emplace_back(LoadedPart{std::move(name), false, {}});
        part.outcome = runLoader([&] { part.isUsable = loader(); });
        return part.outcome.hasReturned();
    };
    bool hasReturned = load("target", [&] { return engagement->initTarget(); }) &&
                       load("threat", [&] { return engagement->initThreat(); });
    if (withTerrain && hasReturned) {
        engagement->keyframeAtZero(); // the terrain's height is that sample's; made now, it counts from the first frame
        Terrain& terrain = *engagement->terrain;
        hasReturned = load("terrain", [&] { return engagement->initTerrain(); });
        for (std::size_t i = 0; i < terrain.tileCount() && hasReturned; ++i)
            hasReturned =
                load("terrain: tile " + std::to_string(i + 1) + ", \"" + terrain.tile(i).getTopoFilePath() + "\"", [&] {
                    return terrain.tile(i).load() && terrain.tile(i).isWhole();
                });
    } else {
        engagement->terrain.reset(); // loading it takes longer than all the rest
    }
    if (hasReturned) {
        engagement->hardbodiesInitialized = true;
        shown_.push_back({newEngagementId(), engagement.get()});
        engagements_.push_back(std::move(engagement));
    }
    return parts;
}

CameraChoice OffscreenView::overview(std::size_t followed) const {
    const Viewpoint over =
        overviewOf(*engagements_.at(followed), kDefaultFieldOfViewDegrees, size_.width(), size_.height());
    CameraChoice choice{.mode = ViewFree};
    for (int i = 0; i < 3; ++i) {
        choice.eye[i] = over.eye.ElementAt(i);
        choice.lookAt[i] = over.centre.ElementAt(i);
    }
    return choice;
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

double OffscreenView::fieldOfViewDegrees(const CameraChoice& choice, std::size_t followed) const {
    return choice.mode == ViewGyro ? double{engagements_.at(followed)->fieldOfView} : kDefaultFieldOfViewDegrees;
}

QImage OffscreenView::draw(
    const SceneOptions& options, const CameraChoice& choice, std::size_t followed, const PictureScale& scale,
    const FlareUnits& flareUnits) {
    applyProjection(fieldOfViewDegrees(choice, followed), size_.width(), size_.height());
    scaledFrame_.paint(
        scene_, shown_, cameraAt(options.time, choice, followed), options,
        {.scale = scale,
         .fieldOfViewDegrees = fieldOfViewDegrees(choice, followed),
         .width = size_.width(),
         .height = size_.height(),
         .followed = shown_.at(followed).id,
         .flareUnits = flareUnits});
    return context_.picture();
}

std::optional<RadiancePicture> OffscreenView::drawRadiance(
    const SceneOptions& options, const CameraChoice& choice, std::size_t followed, float background,
    const FlareUnits& flareUnits) {
    return radianceFrame_.draw(
        shown_, cameraAt(options.time, choice, followed),
        {.fieldOfViewDegrees = fieldOfViewDegrees(choice, followed),
         .width = size_.width(),
         .height = size_.height(),
         .time = options.time,
         .showTerrain = options.showTerrain,
         .background = background,
         .flareUnits = flareUnits});
}

float OffscreenView::skyRadiance(std::size_t followed) const {
    const auto& atmosphere = engagements_.at(followed)->atm;
    return atmosphere == nullptr ? 0.0F : atmosphere->diffuseSkyRadiance();
}
} // namespace sorvane
