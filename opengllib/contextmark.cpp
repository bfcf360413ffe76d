// Tells in which OpenGL contexts objects exist.
#include "contextmark.h"

#include <GL/glew.h>

namespace sorvane {
ContextMark::~ContextMark() {
    if (buffer_ != 0)
        glDeleteBuffers(1, &buffer_);
}

void ContextMark::set() {
    static std::uint64_t last = 0;
    number_ = ++last;
    glGenBuffers(1, &buffer_);
    glBindBuffer(GL_ARRAY_BUFFER, buffer_);
    glBufferData(GL_ARRAY_BUFFER, sizeof number_, &number_, GL_STATIC_DRAW);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
}

bool ContextMark::isInCurrentContext() const {
    if (buffer_ == 0 || glIsBuffer == nullptr || glIsBuffer(buffer_) == GL_FALSE)
        return false;
    GLint size = 0;
    std::uint64_t found = 0;
    glBindBuffer(GL_ARRAY_BUFFER, buffer_);
    glGetBufferParameteriv(GL_ARRAY_BUFFER, GL_BUFFER_SIZE, &size);
    if (size == sizeof found)
        glGetBufferSubData(GL_ARRAY_BUFFER, 0, sizeof found, &found);
    glBindBuffer(GL_ARRAY_BUFFER, 0);
    return found == number_;
}
} // namespace sorvane
