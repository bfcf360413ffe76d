// GL entry points that only count: defined here, they come before the GL library's.
#include "countedgl.h"

#include "glapi.h"

std::uint64_t glCalls = 0;

#define COUNTED(name, ...)                                                                                             \
    extern "C" void GLAPIENTRY name(__VA_ARGS__) {                                                                     \
        ++glCalls;                                                                                                     \
    }

COUNTED(glClear, GLbitfield)
COUNTED(glClipPlane, GLenum, const GLdouble*)
COUNTED(glColor3fv, const GLfloat*)
COUNTED(glDisable, GLenum)
COUNTED(glDisableClientState, GLenum)
COUNTED(glDrawArrays, GLenum, GLint, GLsizei)
COUNTED(glEnable, GLenum)
COUNTED(glEnableClientState, GLenum)
COUNTED(glLineWidth, GLfloat)
COUNTED(glLoadIdentity)
COUNTED(glLoadMatrixd, const GLdouble*)
COUNTED(glLoadMatrixf, const GLfloat*)
COUNTED(glMaterialf, GLenum, GLenum, GLfloat)
COUNTED(glMaterialfv, GLenum, GLenum, const GLfloat*)
COUNTED(glMatrixMode, GLenum)
COUNTED(glMultMatrixd, const GLdouble*)
COUNTED(glMultMatrixf, const GLfloat*)
COUNTED(glNormal3f, GLfloat, GLfloat, GLfloat)
COUNTED(glPointSize, GLfloat)
COUNTED(glPopAttrib)
COUNTED(glPopMatrix)
COUNTED(glPushAttrib, GLbitfield)
COUNTED(glPushMatrix)
COUNTED(glTranslated, GLdouble, GLdouble, GLdouble)
COUNTED(glVertexPointer, GLint, GLenum, GLsizei, const void*)

namespace {
void GLAPIENTRY countBindBuffer(GLenum, GLuint) {
    ++glCalls;
}
void GLAPIENTRY countBufferData(GLenum, GLsizeiptr, const void*, GLenum) {
    ++glCalls;
}
void GLAPIENTRY countDeleteBuffers(GLsizei, const GLuint*) {
    ++glCalls;
}
void GLAPIENTRY countGenBuffers(GLsizei, GLuint* buffers) {
    ++glCalls;
    *buffers = 1;
}
void GLAPIENTRY countMultiDrawArrays(GLenum, const GLint*, const GLsizei*, GLsizei) {
    ++glCalls;
}
} // namespace

void installCountedGl() {
    __glewBindBuffer = countBindBuffer;
    __glewBufferData = countBufferData;
    __glewDeleteBuffers = countDeleteBuffers;
    __glewGenBuffers = countGenBuffers;
    __glewMultiDrawArrays = countMultiDrawArrays;
}
