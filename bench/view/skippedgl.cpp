// OpenGL that can be left out: defined here, the entry points come before the GL library's, which they call.
#include "skippedgl.h"

#include <dlfcn.h>

#include <utility>

#include "glapi.h"

namespace {
bool isOn = false;
std::uint64_t calls = 0;
} // namespace

#define PASSED_ON(name, parameters, ...)                                                                               \
    extern "C" void GLAPIENTRY name parameters {                                                                       \
        using Function = void(GLAPIENTRY*) parameters;                                                                 \
        static const auto made = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, #name));                                \
        ++calls;                                                                                                       \
        if (!isOn)                                                                                                     \
            made(__VA_ARGS__);                                                                                         \
    }

PASSED_ON(glBegin, (GLenum mode), mode)
PASSED_ON(glBindTexture, (GLenum target, GLuint texture), target, texture)
PASSED_ON(glBlendFunc, (GLenum source, GLenum destination), source, destination)
PASSED_ON(glClear, (GLbitfield mask), mask)
PASSED_ON(glColor3f, (GLfloat red, GLfloat green, GLfloat blue), red, green, blue)
PASSED_ON(glColor3fv, (const GLfloat* colour), colour)
PASSED_ON(glColor4f, (GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha), red, green, blue, alpha)
PASSED_ON(glColorPointer, (GLint size, GLenum type, GLsizei stride, const void* start), size, type, stride, start)
PASSED_ON(glDisable, (GLenum what), what)
PASSED_ON(glDisableClientState, (GLenum what), what)
PASSED_ON(glDrawArrays, (GLenum mode, GLint first, GLsizei count), mode, first, count)
PASSED_ON(glDrawElements, (GLenum mode, GLsizei count, GLenum type, const void* indices), mode, count, type, indices)
PASSED_ON(glEnable, (GLenum what), what)
PASSED_ON(glEnableClientState, (GLenum what), what)
PASSED_ON(glFinish, ())
PASSED_ON(glLineWidth, (GLfloat width), width)
PASSED_ON(glLoadIdentity, ())
PASSED_ON(glLoadMatrixf, (const GLfloat* matrix), matrix)
PASSED_ON(glMaterialf, (GLenum face, GLenum name, GLfloat value), face, name, value)
PASSED_ON(glMaterialfv, (GLenum face, GLenum name, const GLfloat* values), face, name, values)
PASSED_ON(glMatrixMode, (GLenum mode), mode)
PASSED_ON(glMultMatrixf, (const GLfloat* matrix), matrix)
PASSED_ON(glNormal3f, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
PASSED_ON(glNormalPointer, (GLenum type, GLsizei stride, const void* start), type, stride, start)
PASSED_ON(glPointSize, (GLfloat size), size)
PASSED_ON(glPolygonMode, (GLenum face, GLenum mode), face, mode)
PASSED_ON(glPopAttrib, ())
PASSED_ON(glPopClientAttrib, ())
PASSED_ON(glPopMatrix, ())
PASSED_ON(glPushAttrib, (GLbitfield mask), mask)
PASSED_ON(glPushClientAttrib, (GLbitfield mask), mask)
PASSED_ON(glPushMatrix, ())
PASSED_ON(glRotatef, (GLfloat angle, GLfloat x, GLfloat y, GLfloat z), angle, x, y, z)
PASSED_ON(glTranslatef, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
PASSED_ON(glVertex3f, (GLfloat x, GLfloat y, GLfloat z), x, y, z)
PASSED_ON(glVertexPointer, (GLint size, GLenum type, GLsizei stride, const void* start), size, type, stride, start)

// Those that GLEW finds are changed for ones that count.
namespace {
template <class... Parameters> void GLAPIENTRY count(Parameters...) {
    ++calls;
}

template <auto& entryPoint> struct Exchanged;
template <class... Parameters, void(GLAPIENTRY*& entryPoint)(Parameters...)> struct Exchanged<entryPoint> {
    static void swap() { std::swap(entryPoint, other); }
    static inline void(GLAPIENTRY* other)(Parameters...) = count<Parameters...>;
};
} // namespace

std::uint64_t skipGl(bool isSkipped) {
    if (isSkipped != isOn) {
        Exchanged<__glewActiveTexture>::swap();
        Exchanged<__glewBindBuffer>::swap();
        Exchanged<__glewBufferData>::swap();
        Exchanged<__glewDrawRangeElements>::swap();
        Exchanged<__glewEnableVertexAttribArray>::swap();
        Exchanged<__glewMultiDrawArrays>::swap();
        Exchanged<__glewMultiDrawElements>::swap();
        Exchanged<__glewSecondaryColorPointer>::swap();
        Exchanged<__glewUniform1f>::swap();
        Exchanged<__glewUniform1fv>::swap();
        Exchanged<__glewUniform1i>::swap();
        Exchanged<__glewUniform3f>::swap();
        Exchanged<__glewUniform4fv>::swap();
        Exchanged<__glewUseProgram>::swap();
        Exchanged<__glewVertexAttribPointer>::swap();
    }
    isOn = isSkipped;
    return std::exchange(calls, 0);
}
