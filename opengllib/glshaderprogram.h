// A GLSL program made of an optional vertex and an optional fragment shader file.
#pragma once

#include <string>

#include "shaderfile.h"

// The GL names are plain integers here, so that this header can stand beside any OpenGL header. Everything but
// construction needs the GL context current in which Init ran, the destructor of an initialised program too.
class GLShaderProgram {
public:
    GLShaderProgram() = default;
    ~GLShaderProgram();
    GLShaderProgram(const GLShaderProgram&) = delete;
    GLShaderProgram& operator=(const GLShaderProgram&) = delete;

    // Loads, compiles and links; an empty path stands for no shader of that stage. False after one message for each
    // level that failed. A program with a fragment shader alone always fails: deliberate, see the definition.
    bool Init(const std::string& vertexPath, const std::string& fragmentPath);

    // Loads the sources only.
    bool LoadSourceFiles(const std::string& vertexPath, const std::string& fragmentPath);

    void Activate() const;
    static void Deactivate();

    // The location of a variable that the linked program uses; -1 after a message, at each call, when there is none of
    // this name. OpenGL ignores values given to location -1.
    int GetUniformVariable(const char* name) const;
    int GetAttribLocation(const char* name) const;

    unsigned int program() const { return program_; }

private:
    bool vertexLoaded_ = false;
    bool fragmentLoaded_ = false;
    unsigned int program_ = 0;
    ShaderFile vertexShader_;
    ShaderFile fragmentShader_;
};
