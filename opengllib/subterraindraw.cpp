// One rectangular tile of terrain: its shader and its drawing.
#include <memory>

#include <GL/glew.h>

#include "atmfile.h"
#include "messages.h"
#include "subterrain.h"
#include "terrainmesh.h"
#include "terrainshader.h"
#include "tiletexture.h"

using namespace sorvane;

namespace {
// Everything that drawing a tile changes, given back at the end.
class SavedState {
public:
    SavedState() {
        glPushAttrib(GL_CURRENT_BIT | GL_ENABLE_BIT | GL_POLYGON_BIT | GL_TEXTURE_BIT | GL_TRANSFORM_BIT);
        glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
    }
    ~SavedState() {
        glPopMatrix();
        glPopClientAttrib();
        glPopAttrib();
    }
    SavedState(const SavedState&) = delete;
    SavedState& operator=(const SavedState&) = delete;
};
} // namespace

bool SubTerrain::loadShader() {
    TerrainUniforms uniforms;
    uniforms.lightBrightness = lighting_.isReflective ? 1.0F : 0.0F;
    uniforms.brightness = radScale_;
    uniforms.solarDirection = lighting_.solarDirection;
    if (lighting_.isSunlit && lighting_.atmosphere != nullptr) {
        uniforms.sunVisible = 1.0F;
        uniforms.diffuseSkyRadiance = lighting_.atmosphere->diffuseSkyRadiance();
        uniforms.solarBeam = lighting_.atmosphere->directSolarRadiance();
    }
    const auto& [origin, xvec, yvec, scale, columns, rows] = placement_;
    uniforms.a = {origin[0], xvec[0] * scale[0], xvec[1] * scale[0]};
    uniforms.b = {origin[1], yvec[0] * scale[1], yvec[1] * scale[1]};
    uniforms.width = static_cast<float>(columns);
    uniforms.height = static_cast<float>(rows);
    TileContent& content = ownContent();
    content.shader = std::make_unique<TerrainShader>();
    if (content.shader->init(paths_.vertexShader, paths_.fragmentShader, uniforms))
        return true;
    printMessage("SubTerrain::loadShader: could not init shader");
    return false;
}

void SubTerrain::render(const Lights& lights) {
    render(lights, [](const Bounds&) { return true; });
}

void SubTerrain::render(const Lights& lights, const Choice& isWanted, const std::optional<float>& brightness) {
    if (!skipFirstPass_)
        renderFirstPass();
    skipFirstPass_ = false;
    if (drawSecondPass_ && (loaded_ || load()))
        renderSecondPass(lights, isWanted, brightness);
}

void SubTerrain::renderFirstPass() const {
    if (!loaded_)
        return;
    const SavedState saved;
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glColor3f(0.5F, 0.5F, 0.5F);
    content_->mesh->drawPositions();
}

void SubTerrain::renderSecondPass(
    const Lights& lights, const Choice& isWanted, const std::optional<float>& brightness) const {
    const SavedState saved;
    content_->shader->activate(lights, brightness);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, content_->texture == nullptr ? 0 : content_->texture->name());
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    content_->mesh->drawAll(isWanted);
    TerrainShader::deactivate();
}
