// A framebuffer of 32-bit floats.
#include "radiancebuffer.h"

#include <cstddef>

#include "glapi.h"

namespace sorvane {
namespace {
constexpr GLenum kMatrices[] = {GL_PROJECTION, GL_MODELVIEW};
constexpr GLenum kOff[] = {GL_BLEND,      GL_LIGHTING, GL_DITHER,     GL_POLYGON_SMOOTH, GL_LINE_SMOOTH,
                           GL_ALPHA_TEST, GL_FOG,      GL_TEXTURE_2D, GL_SCISSOR_TEST,   GL_STENCIL_TEST};
} // namespace

RadianceBuffer::~RadianceBuffer() {
    if (framebuffer_ == 0)
        return;
    glDeleteFramebuffers(1, &framebuffer_);
    glDeleteRenderbuffers(1, &colour_);
    glDeleteRenderbuffers(1, &depth_);
}

bool RadianceBuffer::isSupported() {
    return GLEW_VERSION_3_0;
}

bool RadianceBuffer::bind(int width, int height) {
    if (!isSupported())
        return false;
    GLint largest = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &largest);
    if (width > largest || height > largest)
        return false;
    if (framebuffer_ == 0) {
        glGenFramebuffers(1, &framebuffer_);
        glGenRenderbuffers(1, &colour_);
        glGenRenderbuffers(1, &depth_);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    if (width != width_ || height != height_) {
        glBindRenderbuffer(GL_RENDERBUFFER, colour_);
        glRenderbufferStorage(GL_RENDERBUFFER, GL_R32F, width, height);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colour_);
        glBindRenderbuffer(GL_RENDERBUFFER, depth_);
        glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT24, width, height);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depth_);
        width_ = width;
        height_ = height;
    }
    glViewport(0, 0, width, height);
    return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

std::vector<float> RadianceBuffer::read() const {
    std::vector<float> values(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
    GLint bound = 0;
    glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &bound);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, framebuffer_);
    glReadPixels(0, 0, width_, height_, GL_RED, GL_FLOAT, values.data());
    glBindFramebuffer(GL_READ_FRAMEBUFFER, static_cast<GLuint>(bound));
    return values;
}

RadianceDrawing::RadianceDrawing(float background) {
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer_);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    for (const GLenum matrix : kMatrices) {
        glMatrixMode(matrix);
        glPushMatrix();
    }
    glClampColor(GL_CLAMP_VERTEX_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_READ_COLOR, GL_FALSE);
    glClearColor(background, background, background, 1.0F);
    for (const GLenum off : kOff)
        glDisable(off);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    glEnable(GL_DEPTH_TEST);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

RadianceDrawing::~RadianceDrawing() {
    glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(framebuffer_));
    for (const GLenum matrix : kMatrices) {
        glMatrixMode(matrix);
        glPopMatrix();
    }
    glPopAttrib();
}
} // namespace sorvane
