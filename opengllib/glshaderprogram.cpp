// A GLSL program made of an optional vertex and an optional fragment shader file.
#include "glshaderprogram.h"

#include <GL/glew.h>

#include "printerror.h"

namespace {
// Where the driver lacks shaders, or GLEW has not been initialised, the entry points are null.
bool hasShaders() {
    return glCreateShader != nullptr && glCreateProgram != nullptr && glUseProgram != nullptr;
}

GLuint createShader(GLenum stage) {
    return hasShaders() ? glCreateShader(stage) : 0;
}

bool compile(GLuint shader, const ShaderFile& source) {
    const GLchar* const text = source.text() != nullptr ? source.text() : "";
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint isCompiled = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &isCompiled);
    return isCompiled == GL_TRUE;
}
} // namespace

GLShaderProgram::~GLShaderProgram() {
    if (program_ != 0)
        glDeleteProgram(program_);
}

bool GLShaderProgram::LoadSourceFiles(const std::string& vertexPath, const std::string& fragmentPath) {
    if (!vertexPath.empty()) {
        if (!vertexShader_.Load(vertexPath)) {
            printError(
                __FILE__, "LoadSourceFiles", __LINE__, "Unable to load vertex shader \"%s\".", 1, vertexPath.c_str());
            return false;
        }
        vertexLoaded_ = true;
    }
    if (fragmentPath.empty())
        return true;
    if (!fragmentShader_.Load(fragmentPath)) {
        printError(
            __FILE__, "LoadSourceFiles", __LINE__, "Unable to load fragment shader \"%s\".", 1, fragmentPath.c_str());
        return false;
    }
    fragmentLoaded_ = true;
    return true;
}

bool GLShaderProgram::Init(const std::string& vertexPath, const std::string& fragmentPath) {
    vertexLoaded_ = fragmentLoaded_ = false;
    if (!LoadSourceFiles(vertexPath, fragmentPath))
        return false;

    // Shader objects are deliberately not deleted: they go with the context.
    GLuint vertex = 0;
    if (vertexLoaded_) {
        vertex = createShader(GL_VERTEX_SHADER);
        if (vertex == 0) {
            printError(__FILE__, "Init", __LINE__, "Vertex shader creation failed.", 0);
            return false;
        }
        if (!compile(vertex, vertexShader_)) {
            printError(__FILE__, "Init", __LINE__, "Vertex shader compilation failed.", 0);
            return false;
        }
    }
    GLuint fragment = 0;
    if (fragmentLoaded_) {
        fragment = createShader(GL_FRAGMENT_SHADER);
        // Deliberately tests the vertex shader: a program needs one, and every program of the viewer has both.
        if (vertex == 0) {
            printError(__FILE__, "Init", __LINE__, "Fragment shader creation failed.", 0);
            return false;
        }
        if (!compile(fragment, fragmentShader_)) {
            printError(__FILE__, "Init", __LINE__, "Fragment shader compilation failed.", 0);
            return false;
        }
    }

    if (program_ != 0)
        glDeleteProgram(program_);
    program_ = hasShaders() ? glCreateProgram() : 0;
    if (program_ == 0) {
        printError(__FILE__, "Init", __LINE__, "glCreateProgram() failed.", 0);
        return false;
    }
    if (vertexLoaded_)
        glAttachShader(program_, vertex);
    if (fragmentLoaded_)
        glAttachShader(program_, fragment);
    glLinkProgram(program_);
    GLint isLinked = GL_FALSE;
    glGetProgramiv(program_, GL_LINK_STATUS, &isLinked);
    if (isLinked != GL_TRUE) {
        printError(__FILE__, "Init", __LINE__, "Shader link failed.", 0);
        return false;
    }
    return true;
}

void GLShaderProgram::Activate() const {
    if (hasShaders())
        glUseProgram(program_);
}

void GLShaderProgram::Deactivate() {
    if (hasShaders())
        glUseProgram(0);
}

int GLShaderProgram::GetUniformVariable(const char* name) const {
    const GLint location = program_ == 0 ? -1 : glGetUniformLocation(program_, name);
    if (location == -1)
        printError(__FILE__, "GetUniformVariable", __LINE__, "No variable named \"%s\" exists.", 1, name);
    return location;
}

int GLShaderProgram::GetAttribLocation(const char* name) const {
    const GLint location = program_ == 0 ? -1 : glGetAttribLocation(program_, name);
    if (location == -1)
        printError(__FILE__, "GetAttribLocation", __LINE__, "No variable named \"%s\" exists.", 1, name);
    return location;
}
