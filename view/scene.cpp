// The drawing of a frame, as a function of engagements, camera and options.
#include "scene.h"

#include <algorithm>
#include <cmath>

#include "bodies.h"
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

void setPattern(GLushort pattern, const SceneOptions& options) {
    if (!options.lineStyles)
        return;
    glEnable(GL_LINE_STIPPLE);
    glLineStipple(std::max(static_cast<int>(std::lround(options.pixelRatio)), 1), pattern);
}

float wideLine(const SceneOptions& options) {
    return kWideLine * static_cast<float>(options.pixelRatio);
}

void drawHistory(
    HistoryLine& line, std::size_t sampleCount, const LineMaterial& material, GLushort pattern,
    const SceneOptions& options) {
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_LINE_BIT);
    glLineWidth(wideLine(options));
    setPattern(pattern, options);
    material.apply();
    line.draw(sampleCount);
}

void drawTrails(FlareTrails& trails, std::size_t sampleCount, const SceneOptions& options) {
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_LINE_BIT);
    setPattern(kFlarePattern, options);
    flare_front_mat.apply();
    glNormal3f(0.0F, 0.0F, -1.0F);
    trails.draw(sampleCount);
}

const LineMaterial& threatMaterial(const etxyz& engagement) {
    return engagement.headerText9 == QLatin1String("cyan") ? threat_cyan : threat_yellow;
}

// Rotates the terrain's axes (z up) into the world's (z down) and puts its ground under the threat's first height.
void drawTerrain(etxyz& engagement) {
    const PushedMatrix matrix;
    const float firstThreatHeight = engagement.keyframeAtZero().threatPos[2];
    glRotatef(180.0F, 1.0F, 0.0F, 0.0F);
    glTranslatef(0.0F, 0.0F, -firstThreatHeight);
    if (engagement.terrain != nullptr)
        engagement.terrain->Render(true);
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
    lookAt.loadWorld();
    glLineWidth(static_cast<float>(options.pixelRatio));
    glPointSize(static_cast<float>(options.pixelRatio));
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    for (const SceneEngagement& shown : engagements)
        if (!shown.isHidden)
            drawEngagement(shown, camera, lookAt, options);
    if (options.showGrid)
        grid_.draw(wideLine(options));
    glDisable(GL_LIGHT0);
    glDisable(GL_LIGHTING);
}

void Scene::drawEngagement(
    const SceneEngagement& shown, const Camera& camera, const LookAt& lookAt, const SceneOptions& options) {
    etxyz& engagement = *shown.engagement;
    // Before anything that is built from the samples: it may add one.
    if (options.showTerrain && engagement.areHardbodiesInitialized())
        drawTerrain(engagement);
    if (engagement.keyframes.isEmpty())
        return;

    const PushedMatrix matrix;
    const keyframe frame = engagement.InterpolatedFrame(options.time);
    const Vector<float> sunInEye =
        engagement.atm == nullptr ? Vector<float>() : sunDirectionInEye(*engagement.atm, lookAt.rotation().data());
    const bool hasBodies = engagement.areHardbodiesInitialized();
    if (hasBodies && engagement.target != nullptr)
        drawBody(*engagement.target, {frame.targetPos, frame.targetAtt}, lookAt, sunInEye, options.time);

    const QMap<double, keyframe>& samples = engagement.keyframes;
    EngagementLines& lines = linesOf(shown.id, samples);
    const std::size_t sampleCount = engagement.sampleCountAt(options.time);

    lookAt.load(lines.origin());
    if (options.showHistoryLines)
        drawHistory(
            lines.history(samples, PathOf::Target, options.showDropLines), sampleCount, cyl_front_mat, kTargetPattern,
            options);
    drawFlares(frame.flares, lookAt, options.pixelRatio);
    if (options.showHistoryLines)
        drawTrails(lines.trails(samples), sampleCount, options);

    if (camera.mode() == ViewGyro) {
        // The eye sits in the threat's seeker: no threat and no threat path, but what the seeker frames.
        glLoadMatrixf(lookAt.rotation().data());
        const Vector<float> eye(0.0F, 0.0F, 0.0F, 1.0F);
        drawReticle(reticleFor(eye, eye + camera.look(), engagement.fieldOfView));
        return;
    }
    if (hasBodies && engagement.threat != nullptr)
        drawBody(*engagement.threat, {frame.threatPos, frame.threatAtt}, lookAt, sunInEye, options.time);
    if (options.showHistoryLines) {
        lookAt.load(lines.origin());
        drawHistory(
            lines.history(samples, PathOf::Threat, options.showDropLines), sampleCount, threatMaterial(engagement),
            kThreatPattern, options);
    }
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
