// A GLSL program made of an optional vertex and an optional fragment shader file.
#include "glshaderprogram.h"

#include <algorithm>
#include <string>

#include <GL/glew.h>

#include "fail.h"
#include "messages.h"

using namespace sorvane;

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
    if (isCompiled == GL_TRUE)
        return true;
    GLint length = 0;
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
    std::string log(static_cast<std::size_t>(std::max(length, 1)), '\0');
    glGetShaderInfoLog(shader, static_cast<GLsizei>(log.size()), &length, log.data());
    log.resize(static_cast<std::size_t>(length));
    printDebugText(source.Name().c_str(), log);
    return false;
}
} // namespace

GLShaderProgram::~GLShaderProgram() {
    if (program_ != 0)
        glDeleteProgram(program_);
}

bool GLShaderProgram::LoadSourceFiles(const std::string& vertexPath, const std::string& fragmentPath) {
    if (!vertexPath.empty()) {
        if (!vertexShader_.Load(vertexPath))
            return fail("LoadSourceFiles", "Unable to load vertex shader \"%s\".", vertexPath.c_str());
        vertexLoaded_ = true;
    }
    if (fragmentPath.empty())
        return true;
    if (!fragmentShader_.Load(fragmentPath))
        return fail("LoadSourceFiles", "Unable to load fragment shader \"%s\".", fragmentPath.c_str());
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
        if (vertex == 0)
            return fail("Init", "Vertex shader creation failed.");
        if (!compile(vertex, vertexShader_))
            return fail("Init", "Vertex shader compilation failed.");
    }
    GLuint fragment = 0;
    if (fragmentLoaded_) {
        fragment = createShader(GL_FRAGMENT_SHADER);
        // Deliberately tests the vertex shader: a program needs one, and every program of the viewer has both.
        if (vertex == 0)
            return fail("Init", "Fragment shader creation failed.");
        if (!compile(fragment, fragmentShader_))
            return fail("Init", "Fragment shader compilation failed.");
    }

    if (program_ != 0)
        glDeleteProgram(program_);
    program_ = hasShaders() ? glCreateProgram() : 0;
    if (program_ == 0)
        return fail("Init", "glCreateProgram() failed.");
    if (vertexLoaded_)
        glAttachShader(program_, vertex);
    if (fragmentLoaded_)
        glAttachShader(program_, fragment);
    glLinkProgram(program_);
    GLint isLinked = GL_FALSE;
    glGetProgramiv(program_, GL_LINK_STATUS, &isLinked);
    if (isLinked != GL_TRUE)
        return fail("Init", "Shader link failed.");
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
        fail("GetUniformVariable", "No variable named \"%s\" exists.", name);
    return location;
}

int GLShaderProgram::GetAttribLocation(const char* name) const {
    const GLint location = program_ == 0 ? -1 : glGetAttribLocation(program_, name);
    if (location == -1)
        fail("GetAttribLocation", "No variable named \"%s\" exists.", name);
    return location;
}
