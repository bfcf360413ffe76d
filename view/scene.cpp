// The drawing of a frame, as a function of engagements, camera and options.
#include "scene.h"

#include <algorithm>
#include <cmath>

#include "flares.h"
#include "glapi.h"
#include "glstate.h"
#include "material.h"
#include "matrix.h"
#include "reticle.h"

namespace sorvane {
namespace {
constexpr float kWideLine = 2.0F; // pixels of the view

// One bit for each pixel along a path, the lowest one first, over and over.
constexpr GLushort kTargetPattern = 0xFFFF; // unbroken
constexpr GLushort kThreatPattern = 0x0FFF; // dashes
constexpr GLushort kFlarePattern = 0x3333;  // dots

// So many engagements that what is left out of their lines counts.
constexpr std::size_t kMany = 20;

void setPattern(GLushort pattern, const SceneOptions& options) {
    if (!options.lineStyles)
        return;
    glEnable(GL_LINE_STIPPLE);
    glLineStipple(std::max(static_cast<int>(std::lround(options.pixelRatio)), 1), pattern);
}

float wideLine(const SceneOptions& options) {
    return kWideLine * static_cast<float>(options.pixelRatio);
}

// While it lives, what is drawn has no colours if so asked, and hides all the same.
class ColoursOff {
public:
    explicit ColoursOff(bool isOff) : isOff_(isOff) { set(GL_FALSE); }
    ~ColoursOff() { set(GL_TRUE); }
    ColoursOff(const ColoursOff&) = delete;
    ColoursOff& operator=(const ColoursOff&) = delete;

private:
    void set(GLboolean isOn) const {
        if (isOff_)
            glColorMask(isOn, isOn, isOn, isOn);
    }

    bool isOff_;
};

bool isGhost(const SceneEngagement& shown, const SceneOptions& options) {
    return options.ghosts != nullptr && options.ghosts->contains(shown.id);
}
} // namespace

Vector<float> sunDirectionInEye(const AtmFile& atmosphere, const float* modelView) {
    const Vector<float> inEye = Matrix<float>::fromColumns(modelView) * atmosphere.SolarDirWorld();
    return inEye / Length(inEye);
}

void setUpScene() {
    glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    glDisable(GL_DITHER);
    glShadeModel(GL_SMOOTH);
    glEnable(GL_DEPTH_TEST);
    const GLfloat lightPosition[4] = {0.0F, 0.0F, 1000.0F, 0.0F};
    const GLfloat white[4] = {1.0F, 1.0F, 1.0F, 1.0F};
    const GLfloat ambient[4] = {0.1F, 0.1F, 0.1F, 1.0F};
    glLightfv(GL_LIGHT0, GL_POSITION, lightPosition);
    glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
    glLightfv(GL_LIGHT0, GL_SPECULAR, white);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, ambient);
}

void clearFrame() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void Scene::draw(const std::vector<SceneEngagement>& engagements, const Camera& camera, const SceneOptions& options) {
    const LookAt lookAt(camera);
    const WindowTransform window;
    const Frame frame{camera, options, lookAt, window, Sight(lookAt, window), engagements.size() >= kMany};
    glLineWidth(static_cast<float>(options.pixelRatio));
    glPointSize(static_cast<float>(options.pixelRatio));
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    sampled_.draw(options.samples, [&] { drawFrame(engagements, frame); });
    glDisable(GL_LIGHT0);
    glDisable(GL_LIGHTING);
}

void Scene::drawFrame(const std::vector<SceneEngagement>& engagements, const Frame& frame) {
    depth_.draw([&](const DepthSlice& slice) {
        frame.lookAt.loadWorld();
        Slice parts{
            slice, SliceOfBodies(frame.lookAt, frame.sight, slice, frame.options.time),
            SliceOfTerrains(frame.lookAt, frame.sight, slice, frame.options.loadsTerrain)};
        for (const SceneEngagement& shown : engagements)
            if (!shown.isHidden && !isGhost(shown, frame.options))
                drawEngagement(shown, frame, parts);
        if (frame.options.showGrid) {
            const LinesAcrossSlices lines(slice);
            grid_.draw(wideLine(frame.options));
        }
        drawGhosts(engagements, frame, slice);
    });
}

void Scene::drawGhosts(const std::vector<SceneEngagement>& engagements, const Frame& frame, const DepthSlice& slice) {
    if (frame.options.ghosts == nullptr)
        return;
    std::vector<Ghosts::Shown> ghosts;
    for (const SceneEngagement& shown : engagements)
        if (!shown.isHidden && isGhost(shown, frame.options))
            ghosts.push_back({shown.id, &shown.engagement->samples});
    ghosts_.draw(ghosts, *frame.options.ghosts, frame.lookAt, slice, {frame.options.time, frame.options.pixelRatio});
}

std::vector<Terrain*>
Scene::shownTerrains(const std::vector<SceneEngagement>& engagements, const SceneOptions& options) {
    std::vector<Terrain*> terrains;
    for (const SceneEngagement& shown : engagements)
        if (options.showTerrain && !shown.isHidden && !isGhost(shown, options) &&
            shown.engagement->areHardbodiesInitialized() && shown.engagement->terrain != nullptr)
            terrains.push_back(shown.engagement->terrain.get());
    return terrains;
}

void Scene::forget(EngagementId id) {
    lines_.erase(id);
    ghosts_.forget(id);
}

void Scene::drawEngagement(const SceneEngagement& shown, const Frame& frame, Slice& parts) {
    const DepthSlice& slice = parts.depths;
    etxyz& engagement = *shown.engagement;
    const Camera& camera = frame.camera;
    const SceneOptions& options = frame.options;
    const LookAt& lookAt = frame.lookAt;
    // Before anything that is built from the samples: it may add one.
    if (options.showTerrain && engagement.areHardbodiesInitialized()) {
        const ColoursOff off(options.areLinesAlone);
        parts.terrains.draw(engagement);
    }
    if (engagement.keyframes.isEmpty())
        return;

    const PushedMatrix matrix;
    const keyframe state = engagement.InterpolatedFrame(options.time);
    const Vector<float> sunInEye =
        engagement.atm == nullptr ? Vector<float>() : sunDirectionInEye(*engagement.atm, lookAt.rotation().data());
    const auto drawBodyAt = [&](Hardbody* body, const BodyPose& pose) {
        const ColoursOff off(options.areLinesAlone);
        if (engagement.areHardbodiesInitialized() && body != nullptr)
            parts.bodies.draw(*body, pose, sunInEye);
    };
    drawBodyAt(engagement.target.get(), {state.targetPos, state.targetAtt});

    const Paths paths{engagement, linesOf(shown.id, engagement.keyframes), engagement.sampleCountAt(options.time)};
    drawPath(paths, PathOf::Target, frame, slice);
    {
        const ColoursOff off(options.areLinesAlone);
        drawFlares(state.flares, lookAt, {frame.window, frame.sight}, slice, {options.pixelRatio, options.samples > 0});
    }
    drawTrails(paths, frame, slice);

    if (camera.mode() == ViewGyro) {
        // The eye sits in the threat's seeker: no threat and no threat path, but what the seeker frames.
        if (options.reticleOf.value_or(shown.id) != shown.id)
            return;
        // All are about the same eye: those of one field of view would cover each other.
        if (std::ranges::find(parts.reticles, engagement.fieldOfView) != parts.reticles.end())
            return;
        parts.reticles.push_back(engagement.fieldOfView);
        glLoadMatrixf(lookAt.rotation().data());
        const Vector<float> eye(0.0F, 0.0F, 0.0F, 1.0F);
        const LinesAcrossSlices across(slice);
        drawReticle(reticleFor(eye, eye + camera.look(), engagement.fieldOfView));
        return;
    }
    drawBodyAt(engagement.threat.get(), {state.threatPos, state.threatAtt});
    drawPath(paths, PathOf::Threat, frame, slice);
}

bool Scene::isInSight(const Box& box, const Paths& paths, const Frame& frame, const DepthSlice& slice) {
    const Vertex& origin = paths.lines.origin();
    return slice.reaches(frame.lookAt.depthsOf(box, origin)) && frame.sight.reaches(box, origin);
}

void Scene::drawPath(const Paths& paths, PathOf body, const Frame& frame, const DepthSlice& slice) {
    const SceneOptions& options = frame.options;
    if (!options.showHistoryLines)
        return;
    HistoryLine& line = paths.lines.history(paths.engagement.keyframes, body, options.showDropLines);
    if (!isInSight(line.box(), paths, frame, slice))
        return;
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_LINE_BIT);
    const LinesAcrossSlices across(slice);
    frame.lookAt.load(paths.lines.origin());
    glLineWidth(wideLine(options));
    setPattern(body == PathOf::Target ? kTargetPattern : kThreatPattern, options);
    (body == PathOf::Target ? cyl_front_mat : threatMaterial(paths.engagement)).apply();
    const LineSight lineSight{frame.sight, paths.lines.origin(), frame.areMany};
    line.draw(paths.sampleCount, options.lineStyles ? nullptr : &lineSight); // a pattern runs along the whole strip
}

void Scene::drawTrails(const Paths& paths, const Frame& frame, const DepthSlice& slice) {
    if (!frame.options.showHistoryLines)
        return;
    FlareTrails& trails = paths.lines.trails(paths.engagement.keyframes);
    if (!isInSight(trails.box(), paths, frame, slice))
        return;
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_LINE_BIT);
    const LinesAcrossSlices across(slice);
    frame.lookAt.load(paths.lines.origin());
    setPattern(kFlarePattern, frame.options);
    flare_front_mat.apply();
    glNormal3f(0.0F, 0.0F, -1.0F);
    const LineSight lineSight{frame.sight, paths.lines.origin(), frame.areMany};
    trails.draw(paths.sampleCount, frame.options.lineStyles ? nullptr : &lineSight);
}

EngagementLines& Scene::linesOf(EngagementId id, const QMap<double, keyframe>& samples) {
    const auto found = lines_.find(id);
    if (found != lines_.end() && found->second.fit(samples))
        return found->second;
    if (found != lines_.end())
        lines_.erase(found);
    return lines_.try_emplace(id, samples).first->second;
}
} // namespace sorvane
