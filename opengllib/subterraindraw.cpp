// One rectangular tile of terrain: its OpenGL objects and its drawing.
#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numeric>
#include <span>

#include <GL/glew.h>

#include "atmfile.h"
#include "cnumericlocale.h"
#include "loadradfile.h"
#include "messages.h"
#include "subterrain.h"
#include "terrainmesh.h"
#include "terrainshader.h"

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

void printRange(std::span<const float> radiances) {
    const CNumericLocale decimalPoint;
    float least = radiances[0];
    float greatest = radiances[0];
    // Several sums side by side: a single one would wait for each addition.
    std::array<double, 8> sums{};
    for (std::size_t i = 0; i < radiances.size(); ++i) {
        least = std::min(least, radiances[i]);
        greatest = std::max(greatest, radiances[i]);
        sums[i % sums.size()] += double{radiances[i]};
    }
    const double sum = std::accumulate(sums.begin(), sums.end(), 0.0);
    printMessage(
        "SubTerran::loadTextures: min: %f max: %f avg: %f", double{least}, double{greatest},
        sum / static_cast<double>(radiances.size()));
}

// Filtering would spread what is not finite to the texels around it and to all coarser levels: infinite becomes as
// bright as can be, and what is not a number dark.
void makeFilterable(std::span<float> radiances) {
    constexpr float kLargest = 1e30F;
    for (float& radiance : radiances) {
        const float limited = radiance < kLargest ? radiance : kLargest;
        radiance = std::isnan(radiance) || radiance < -kLargest ? 0.0F : limited;
    }
}
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

bool SubTerrain::loadTextures() {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    if (placement_.columns > largest || placement_.rows > largest) {
        printMessage(
            "SubTerrain::loadTextures: %s has %d x %d samples, a texture has at most %d x %d here",
            paths_.radiance.c_str(), placement_.columns, placement_.rows, largest, largest);
        return false;
    }
    if (posts() == 0 || !hasSize(paths_.radiance, readRasterSize(paths_.radiance)))
        return false;
    const std::unique_ptr<float[]> radiances(loadRadFile(paths_.radiance));
    if (radiances == nullptr) {
        printMessage("SubTerrain::loadTextures: error reading rad file");
        return false;
    }
    printRange({radiances.get(), posts()});
    makeFilterable({radiances.get(), posts()});
    unsigned& texture = ownContent().texture;
    if (texture == 0)
        glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_BASE_LEVEL, 0);
    glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
    glTexImage2D(
        GL_TEXTURE_2D, 0, GL_LUMINANCE32F_ARB, placement_.columns, placement_.rows, 0, GL_LUMINANCE, GL_FLOAT,
        radiances.get());
    glBindTexture(GL_TEXTURE_2D, 0);
    return true;
}

void SubTerrain::unallocateArrays() {
    loaded_ = false;
    content_ = std::make_shared<TileContent>();
}

void SubTerrain::render(const Lights& lights) {
    if (!skipFirstPass_)
        renderFirstPass();
    skipFirstPass_ = false;
    if (drawSecondPass_ && (loaded_ || load()))
        renderSecondPass(lights);
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

void SubTerrain::renderSecondPass(const Lights& lights) const {
    const SavedState saved;
    content_->shader->activate(lights);
    glActiveTexture(GL_TEXTURE0);
    glBindTexture(GL_TEXTURE_2D, content_->texture);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    content_->mesh->drawAll();
    TerrainShader::deactivate();
}
