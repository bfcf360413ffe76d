// The shader program of a body and its inputs.
#include "bodyshader.h"

#include <GL/glew.h>

#include "brdffile.h"

namespace sorvane {
std::string BodyShader::vertexPath(const std::string& shaderDir) {
    return shaderDir + "SandfordRobertson_simple.vert";
}

std::string BodyShader::fragmentPath(const std::string& shaderDir) {
    return shaderDir + "SandfordRobertson_simple.frag";
}

bool BodyShader::Init(
    const std::string& shaderDir, float earthRadiance, float skyRadiance, float solarBeam, float brightness) {
    if (!program_.Init(vertexPath(shaderDir), fragmentPath(shaderDir)))
        return false;
    program_.Activate();
    glUniform1f(program_.GetUniformVariable("DiffuseEarthRadiance"), earthRadiance);
    glUniform1f(program_.GetUniformVariable("DiffuseSkyRadiance"), skyRadiance);
    glUniform1f(program_.GetUniformVariable("SolarBeam"), solarBeam);
    glUniform1f(program_.GetUniformVariable("Brightness"), brightness);
    GLShaderProgram::Deactivate();

    solarDirEyeCoords_ = program_.GetUniformVariable("SolarDirEyeCoords");
    eps_ = program_.GetUniformVariable("eps");
    rho_ = program_.GetUniformVariable("rho");
    b_ = program_.GetUniformVariable("b");
    e_ = program_.GetUniformVariable("e");
    G_ = program_.GetUniformVariable("G");
    mode_ = program_.GetUniformVariable("mode");
    attributes_.multiFacetRadiance = program_.GetAttribLocation("facet_radiance_multi");
    attributes_.earthFormFactor = program_.GetAttribLocation("earthFormFactor");
    attributes_.skyFormFactor = program_.GetAttribLocation("skyFormFactor");
    return true;
}

void BodyShader::setSolarDirection(const Vector<float>& eyeCoordinates) const {
    glUniform3f(
        solarDirEyeCoords_, eyeCoordinates.ElementAt(0), eyeCoordinates.ElementAt(1), eyeCoordinates.ElementAt(2));
}

void BodyShader::setClass(const BrdfClass& brdfClass) const {
    glUniform1f(eps_, brdfClass.epsilon);
    glUniform1f(rho_, brdfClass.rho_d);
    glUniform1f(b_, brdfClass.b);
    glUniform1f(e_, brdfClass.e);
    glUniform1f(G_, brdfClass.G);
    glUniform1i(mode_, brdfClass.mode);
}
} // namespace sorvane
