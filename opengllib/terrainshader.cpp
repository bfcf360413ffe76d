// The shader program of a tile.
#include "terrainshader.h"

#include <GL/glew.h>

namespace sorvane {
namespace {
// One past the last light that is on.
int lightCount(const Lights& lights) {
    std::size_t count = lights.intensity.size();
    while (count > 0 && lights.intensity[count - 1] == 0.0F)
        --count;
    return static_cast<int>(count);
}
} // namespace

bool TerrainShader::init(
    const std::string& vertexPath, const std::string& fragmentPath, const TerrainUniforms& uniforms) {
    if (!program_.Init(vertexPath, fragmentPath))
        return false;
    const struct {
        const char* name;
        float value;
    } values[] = {
        {"LightBrightness", uniforms.lightBrightness},
        {"Brightness", uniforms.brightness},
        {"SolarX", uniforms.solarDirection[0]},
        {"SolarY", uniforms.solarDirection[1]},
        {"SolarZ", uniforms.solarDirection[2]},
        {"sunVisible", uniforms.sunVisible},
        {"DiffuseSkyRadiance", uniforms.diffuseSkyRadiance},
        {"SolarBeam", uniforms.solarBeam},
        {"a0", uniforms.a[0]},
        {"a1", uniforms.a[1]},
        {"a2", uniforms.a[2]},
        {"b0", uniforms.b[0]},
        {"b1", uniforms.b[1]},
        {"b2", uniforms.b[2]},
        {"width", uniforms.width},
        {"height", uniforms.height},
    };
    program_.Activate();
    sampler_ = program_.GetUniformVariable("sampler0");
    glUniform1i(sampler_, 0);
    for (const auto& [name, value] : values)
        glUniform1f(program_.GetUniformVariable(name), value);
    ownBrightness_ = uniforms.brightness;
    brightness_ = glGetUniformLocation(program_.program(), "Brightness"); // a missing one has been told of
    intensity_ = program_.GetUniformVariable("intensity");
    lightPosObj_ = program_.GetUniformVariable("light_pos_obj");
    // Lets the shader skip its loop; one that does without is no fault.
    lightCount_ = glGetUniformLocation(program_.program(), "lightCount");
    GLShaderProgram::Deactivate();
    return true;
}

void TerrainShader::activate(const Lights& lights, const std::optional<float>& brightness) const {
    program_.Activate();
    glUniform1i(sampler_, 0);
    glUniform1f(brightness_, brightness.value_or(ownBrightness_));
    glUniform1fv(intensity_, static_cast<GLsizei>(lights.intensity.size()), lights.intensity.data());
    glUniform4fv(lightPosObj_, static_cast<GLsizei>(lights.intensity.size()), lights.lightPosObj.data());
    glUniform1i(lightCount_, lightCount(lights));
}
} // namespace sorvane
