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

bool BodyShader::Init(const std::string& shaderDir) {
    if (!program_.Init(vertexPath(shaderDir), fragmentPath(shaderDir)))
        return false;
    earthRadiance_ = program_.GetUniformVariable("DiffuseEarthRadiance");
    skyRadiance_ = program_.GetUniformVariable("DiffuseSkyRadiance");
    solarBeam_ = program_.GetUniformVariable("SolarBeam");
    brightness_ = program_.GetUniformVariable("Brightness");
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

void BodyShader::setLight(const BodyLight& light) const {
    glUniform1f(earthRadiance_, light.earthRadiance);
    glUniform1f(skyRadiance_, light.skyRadiance);
    glUniform1f(solarBeam_, light.solarBeam);
    glUniform1f(brightness_, light.brightness);
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
