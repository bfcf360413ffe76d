// Anti-aliasing: several samples a pixel.
#include "antialiasing.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "glapi.h"

namespace sorvane {
namespace {
bool hasSampledFramebuffers() {
    return GLEW_VERSION_3_0 || GLEW_ARB_framebuffer_object;
}

int mostSamples() {
    GLint most = 0;
    if (hasSampledFramebuffers())
        glGetIntegerv(GL_MAX_SAMPLES, &most);
    return most;
}

// By the names that Mesa's and the systems' own software renderers have.
bool isSoftware() {
    const auto* const name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    const std::string_view renderer = name == nullptr ? "" : name;
    return std::ranges::any_of(std::array{"llvmpipe", "softpipe", "swrast", "Software", "SWR"}, [&](const char* part) {
        return renderer.find(part) != std::string_view::npos;
    });
}
} // namespace

std::vector<int> sampleChoices() {
    std::vector<int> choices = {0};
    for (const int samples : {2, 4, 8})
        if (samples <= mostSamples())
            choices.push_back(samples);
    return choices;
}

int defaultSamples() {
    constexpr int kUsual = 4;
    return isSoftware() || mostSamples() < kUsual ? 0 : kUsual;
}

SampledFrame::~SampledFrame() {
    if (framebuffer_ == 0)
        return;
    glDeleteFramebuffers(1, &framebuffer_);
    glDeleteRenderbuffers(1, &colour_);
    glDeleteRenderbuffers(1, &depth_);
}

void SampledFrame::draw(int samples, const std::function<void()>& drawFrame) {
    if (samples <= 0 || samples > mostSamples())
        return drawFrame();
    GLint framebuffer = 0;
    glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer);
    const auto target = static_cast<GLuint>(framebuffer);
    const bool isBound = bind(samples);
    if (!isBound)
        glBindFramebuffer(GL_FRAMEBUFFER, target);
    drawFrame();
    if (!isBound)
        return;
    // A frame leaves the framebuffer that it draws into bound.
    glBindFramebuffer(GL_DRAW_FRAMEBUFFER, target);
    glBlitFramebuffer(
        0, 0, size_[0], size_[1], 0, 0, size_[0], size_[1], static_cast<GLbitfield>(GL_COLOR_BUFFER_BIT), GL_NEAREST);
    glBindFramebuffer(GL_FRAMEBUFFER, target);
}

// False when the context has no such framebuffer after all.
bool SampledFrame::bind(int samples) {
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    // At least as large as the target, which fractional scaling may round up where the viewport is rounded down.
    const std::array<int, 3> size = {viewport[0] + viewport[2] + 1, viewport[1] + viewport[3] + 1, samples};
    if (framebuffer_ == 0) {
        glGenFramebuffers(1, &framebuffer_);
        glGenRenderbuffers(1, &colour_);
        glGenRenderbuffers(1, &depth_);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    if (!std::ranges::equal(size, size_)) {
        std::ranges::copy(size, size_);
        glBindRenderbuffer(GL_RENDERBUFFER, colour_);
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_RGBA8, size[0], size[1]);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colour_);
        glBindRenderbuffer(GL_RENDERBUFFER, depth_);
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, samples, GL_DEPTH24_STENCIL8, size[0], size[1]);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, depth_);
    }
    return glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE;
}
} // namespace sorvane
