// An OpenGL context without a window, for tests and benchmarks of what is drawn.
#include "glcontext.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

GlContext::GlContext(int width, int height, const GlContext* sharing) : width_(width), height_(height) {
    isUsable_ = createContext(sharing) && createPicture();
}

GlContext::~GlContext() {
    if (display_ == nullptr)
        return;
    if (framebuffer_ != 0) {
        glDeleteFramebuffers(1, &framebuffer_);
        glDeleteRenderbuffers(1, &colour_);
        glDeleteRenderbuffers(1, &depth_);
    }
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    if (context_ != nullptr)
        eglDestroyContext(display_, context_);
    // The display stays: with it the driver would be unloaded, and the leak checker could not tell any more whose
    // allocations it finds.
}

bool GlContext::createContext(const GlContext* sharing) {
    const EGLDisplay display = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr);
    if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) == EGL_FALSE)
        return false;
    display_ = display;
    if (eglBindAPI(EGL_OPENGL_API) == EGL_FALSE)
        return false;
    const EGLint attributes[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint found = 0;
    if (eglChooseConfig(display, attributes, &config, 1, &found) == EGL_FALSE || found < 1)
        return false;
    context_ = eglCreateContext(display, config, sharing == nullptr ? EGL_NO_CONTEXT : sharing->context_, nullptr);
    if (context_ == EGL_NO_CONTEXT || eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context_) == EGL_FALSE)
        return false;
    // GLEW loads the entry points, and complains then that there is no X display.
    const GLenum result = glewInit();
    return result == GLEW_OK || (result == GLEW_ERROR_NO_GLX_DISPLAY && glCreateShader != nullptr);
}

void GlContext::makeCurrent() const {
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
}

bool GlContext::createPicture() {
    glGenFramebuffers(1, &framebuffer_);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    glGenRenderbuffers(1, &colour_);
    glBindRenderbuffer(GL_RENDERBUFFER, colour_);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA32F, width_, height_);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colour_);
    glGenRenderbuffers(1, &depth_);
    glBindRenderbuffer(GL_RENDERBUFFER, depth_);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH_COMPONENT24, width_, height_);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depth_);
    glViewport(0, 0, width_, height_);
    glClampColor(GL_CLAMP_READ_COLOR, GL_FALSE);
    glClampColor(GL_CLAMP_FRAGMENT_COLOR, GL_FALSE);
    return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}

std::vector<float> GlContext::pixels() const {
    std::vector<float> values(4 * static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_));
    glReadPixels(0, 0, width_, height_, GL_RGBA, GL_FLOAT, values.data());
    return values;
}

std::vector<GLint> GlContext::state() {
    std::vector<GLint> state;
    for (const GLenum name : std::initializer_list<GLenum>{
             GL_ATTRIB_STACK_DEPTH, GL_CLIENT_ATTRIB_STACK_DEPTH, GL_MODELVIEW_STACK_DEPTH, GL_MATRIX_MODE,
             GL_MODELVIEW_MATRIX, GL_CURRENT_PROGRAM, GL_ARRAY_BUFFER_BINDING, GL_ELEMENT_ARRAY_BUFFER_BINDING,
             GL_TEXTURE_BINDING_2D, GL_VERTEX_ARRAY, GL_COLOR_ARRAY, GL_NORMAL_ARRAY}) {
        GLint values[16] = {};
        glGetIntegerv(name, values);
        state.insert(state.end(), values, values + (name == GL_MODELVIEW_MATRIX ? 16 : 1));
    }
    return state;
}
