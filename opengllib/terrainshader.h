// The shader program of a tile, with what does not change from frame to frame already set.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "glshaderprogram.h"
#include "lights.h"

namespace sorvane {
// The values that a tile's program is given once. The shaders invert
// x = a[1] · column + a[2] · row + a[0], y = b[1] · column + b[2] · row + b[0].
struct TerrainUniforms {
    float lightBrightness = 0.0F; // 1 when materials reflect, else 0
    float brightness = 1.0F;
    std::array<float, 3> solarDirection{0.0F, 0.0F, 1.0F}; // world
    float sunVisible = 0.0F;                               // 1 or 0
    float diffuseSkyRadiance = 0.0F;                       // W/cm²/sr, as solarBeam
    float solarBeam = 0.0F;
    std::array<float, 3> a{};
    std::array<float, 3> b{};
    float width = 0.0F;
    float height = 0.0F;
};

class TerrainShader {
public:
    // False after a message when the program can't be built.
    bool init(const std::string& vertexPath, const std::string& fragmentPath, const TerrainUniforms& uniforms);

    // Makes the program current with these lights, reading texture unit 0. What radiances are multiplied by is
    // `brightness`, or the value that was given once.
    void activate(const Lights& lights, const std::optional<float>& brightness = {}) const;
    static void deactivate() { GLShaderProgram::Deactivate(); }

private:
    GLShaderProgram program_;
    float ownBrightness_ = 1.0F;
    int sampler_ = -1;
    int brightness_ = -1;
    int intensity_ = -1;
    int lightPosObj_ = -1;
    int lightCount_ = -1;
};
} // namespace sorvane
