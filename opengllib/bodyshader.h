// The shader program of a body and its inputs.
#pragma once

#include <string>

#include "bodylight.h"
#include "facetbuffers.h"
#include "glshaderprogram.h"
#include "vector.h"

struct BrdfClass;

namespace sorvane {
// Needs the GL context current in which Init ran.
class BodyShader {
public:
    // The sources in `shaderDir`, a path with its closing slash.
    static std::string vertexPath(const std::string& shaderDir);
    static std::string fragmentPath(const std::string& shaderDir);

    // Builds the program from "SandfordRobertson_simple.vert" and ".frag" in `shaderDir`, a path with its closing
    // slash. Looks up every input once; one that the program doesn't have is reported then, and is ignored.
    bool Init(const std::string& shaderDir);

    void Activate() const { program_.Activate(); }
    static void Deactivate() { GLShaderProgram::Deactivate(); }

    // While active: the light, the direction to the sun in eye coordinates, and the reflectance of what is drawn next.
    void setLight(const BodyLight& light) const;
    void setSolarDirection(const Vector<float>& eyeCoordinates) const;
    void setClass(const BrdfClass& brdfClass) const;

    const FacetBuffers::Attributes& attributes() const { return attributes_; }

private:
    GLShaderProgram program_;
    FacetBuffers::Attributes attributes_;
    int earthRadiance_ = -1;
    int skyRadiance_ = -1;
    int solarBeam_ = -1;
    int brightness_ = -1;
    int solarDirEyeCoords_ = -1;
    int eps_ = -1;
    int rho_ = -1;
    int b_ = -1;
    int e_ = -1;
    int G_ = -1;
    int mode_ = -1;
};
} // namespace sorvane
