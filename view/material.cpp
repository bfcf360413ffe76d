// The static material sets of the line sets.
#include "material.h"

#include "etxyz.h"
#include "glapi.h"

using namespace sorvane;

namespace {
// A set that shows exactly its colour under lighting: it emits the colour and reflects nothing.
constexpr LineMaterial emitting(Rgb colour, float shininess) {
    return {.colour = colour, .emission = colour, .shininess = shininess};
}

void setArray(GLenum name, const Rgb& rgb) {
    const GLfloat values[4] = {rgb[0], rgb[1], rgb[2], 1.0F};
    glMaterialfv(GL_FRONT, name, values);
}
} // namespace

const LineMaterial cyl_front_mat = emitting({0.0F, 1.0F, 0.0F}, 15.0F);
namespace sorvane {
const LineMaterial threat_yellow = emitting({1.0F, 1.0F, 0.0F}, 15.0F);
const LineMaterial threat_cyan = emitting({0.0F, 1.0F, 1.0F}, 15.0F);

const LineMaterial& threatMaterial(const etxyz& engagement) {
    return engagement.headerText9 == QLatin1String("cyan") ? threat_cyan : threat_yellow;
}
} // namespace sorvane

const LineMaterial flare_front_mat = {
    .colour = {0.8F, 0.1F, 0.1F},
    .emission = {0.4F, 0.0F, 0.0F},
    .ambient = {0.8F, 0.1F, 0.1F},
    .specular = {0.2F, 0.2F, 0.2F},
    .diffuse = {0.8F, 0.1F, 0.1F},
    .shininess = 15.0F};
const LineMaterial ret_front_mat = emitting({0.7F, 0.7F, 0.7F}, 15.0F);
namespace sorvane {
const LineMaterial grid_mat = emitting({0.4F, 0.4F, 0.5F}, 0.0F);
} // namespace sorvane

void LineMaterial::apply() const {
    setArray(GL_EMISSION, emission);
    setArray(GL_AMBIENT, ambient);
    setArray(GL_SPECULAR, specular);
    setArray(GL_DIFFUSE, diffuse);
    glMaterialf(GL_FRONT, GL_SHININESS, shininess);
    glColor3fv(colour.data());
}
