// The drawing of a frame, as a function of engagements, camera and options.
#include "scene.h"

#include "bodies.h"
#include "flares.h"
#include "glapi.h"
#include "glstate.h"
#include "material.h"
#include "matrix.h"
#include "reticle.h"

namespace {
void drawHistory(HistoryLine& line, std::size_t sampleCount, const LineMaterial& material) {
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_LINE_BIT);
    glLineWidth(2.0F);
    material.apply();
    line.draw(sampleCount);
}

void drawTrails(FlareTrails& trails, std::size_t sampleCount) {
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_LINE_BIT);
    flare_front_mat.apply();
    glNormal3f(0.0F, 0.0F, -1.0F);
    trails.draw(sampleCount);
}

Matrix<float> currentModelView() {
    Matrix<float> modelView;
    glGetFloatv(GL_MODELVIEW_MATRIX, modelView.data());
    return modelView;
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
    glLoadIdentity();
    const Vector<float>& eye = camera.eye();
    const Vector<float>& centre = camera.centre();
    gluLookAt(
        eye.ElementAt(0), eye.ElementAt(1), eye.ElementAt(2), centre.ElementAt(0), centre.ElementAt(1),
        centre.ElementAt(2), 0.0, 0.0, -1.0);
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    for (const SceneEngagement& shown : engagements)
        if (!shown.isHidden)
            drawEngagement(*shown.engagement, camera, options);
    if (options.showGrid)
        grid_.draw();
    glDisable(GL_LIGHT0);
    glDisable(GL_LIGHTING);
}

void Scene::drawEngagement(etxyz& engagement, const Camera& camera, const SceneOptions& options) {
    // Before anything that is built from the samples: it may add one.
    if (options.showTerrain && engagement.areHardbodiesInitialized())
        drawTerrain(engagement);
    if (engagement.keyframes.isEmpty())
        return;

    const PushedMatrix matrix;
    const keyframe frame = engagement.InterpolatedFrame(options.time);
    const Vector<float> sunInEye =
        engagement.atm == nullptr ? Vector<float>() : sunDirectionInEye(*engagement.atm, currentModelView().data());
    const bool hasBodies = engagement.areHardbodiesInitialized();
    if (hasBodies && engagement.target != nullptr)
        drawBody(*engagement.target, {frame.targetPos, frame.targetAtt}, camera.eye(), sunInEye, options.time);

    EngagementLines& lines = linesOf(engagement);
    const std::size_t sampleCount = engagement.sampleCountAt(options.time);

    if (options.showHistoryLines)
        drawHistory(lines.history(PathOf::Target, options.showDropLines), sampleCount, cyl_front_mat);
    drawFlares(frame.flares, camera.eye());
    if (options.showHistoryLines)
        drawTrails(lines.trails(), sampleCount);

    if (camera.mode() == ViewGyro) {
        // The eye sits in the threat's seeker: no threat and no threat path, but what the seeker frames.
        drawReticle(reticleFor(camera.eye(), camera.centre(), engagement.fieldOfView));
        return;
    }
    if (hasBodies && engagement.threat != nullptr)
        drawBody(*engagement.threat, {frame.threatPos, frame.threatAtt}, camera.eye(), sunInEye, options.time);
    if (options.showHistoryLines)
        drawHistory(lines.history(PathOf::Threat, options.showDropLines), sampleCount, threatMaterial(engagement));
}

EngagementLines& Scene::linesOf(const etxyz& engagement) {
    const auto found = lines_.find(&engagement);
    if (found != lines_.end() && found->second.matches(engagement))
        return found->second;
    if (found != lines_.end())
        lines_.erase(found);
    return lines_.try_emplace(&engagement, engagement).first->second;
}
