// OpenGL without a window, a display or an X server.
#include "offscreencontext.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <thread>
#include <vector>

#include "glapi.h"
#include "glentrypoints.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>

namespace sorvane {
namespace {
bool isListed(const char* extensions, std::string_view name) {
    std::string_view rest = extensions == nullptr ? "" : extensions;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        if (rest.substr(0, end) == name)
            return true;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return false;
}

template <class Function> Function entryPoint(const char* name) {
    return reinterpret_cast<Function>(eglGetProcAddress(name));
}

bool isSoftwareAskedFor() {
    const char* const value = std::getenv("LIBGL_ALWAYS_SOFTWARE");
    return value != nullptr && *value != '\0' && std::strcmp(value, "0") != 0;
}

// On two processors the second one is for whoever writes the pictures: Mesa's software renderer, left to itself, takes
// both with threads that gain it little. Works until the driver is loaded.
void leaveAProcessorFree() {
    if (std::thread::hardware_concurrency() <= 2)
        ::setenv("LP_NUM_THREADS", "0", 0);
}

// The devices that are graphics processors.
std::vector<EGLDeviceEXT> graphicsProcessors() {
    if (!isListed(eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS), "EGL_EXT_platform_device"))
        return {};
    const auto queryDevices = entryPoint<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
    const auto queryDeviceString = entryPoint<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT");
    EGLint count = 0;
    if (queryDevices == nullptr || queryDeviceString == nullptr || queryDevices(0, nullptr, &count) == EGL_FALSE)
        return {};
    std::vector<EGLDeviceEXT> devices(static_cast<std::size_t>(std::max(count, 0)));
    if (queryDevices(count, devices.data(), &count) == EGL_FALSE)
        return {};
    devices.resize(static_cast<std::size_t>(std::max(count, 0)));
    std::erase_if(devices, [&](EGLDeviceEXT device) {
        return isListed(queryDeviceString(device, EGL_EXTENSIONS), "EGL_MESA_device_software");
    });
    return devices;
}
} // namespace

OffscreenContext::OffscreenContext(int width, int height) : width_(width), height_(height) {
    createContext();
    if (!problem_)
        createFramebuffer();
}

OffscreenContext::~OffscreenContext() {
    if (display_ == nullptr)
        return;
    if (framebuffer_ != 0) {
        glDeleteFramebuffers(1, &framebuffer_);
        glDeleteRenderbuffers(1, &colour_);
        glDeleteRenderbuffers(1, &depth_);
    }
    eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    eglDestroyContext(display_, context_);
    // The display stays until the process ends: it is shared with whoever else in the process asks for it.
}

void OffscreenContext::createContext() {
    leaveAProcessorFree();
    if (!isSoftwareAskedFor() && createContextOnDevice())
        return;
    if (!createContextOn(eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, EGL_DEFAULT_DISPLAY, nullptr)))
        problem_ = "no OpenGL without a display: EGL offers none (is Mesa's EGL driver installed?)";
}

bool OffscreenContext::createContextOnDevice() {
    return std::ranges::any_of(graphicsProcessors(), [this](EGLDeviceEXT device) {
        return createContextOn(eglGetPlatformDisplay(EGL_PLATFORM_DEVICE_EXT, device, nullptr));
    });
}

bool OffscreenContext::createContextOn(void* display) {
    if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) == EGL_FALSE ||
        eglBindAPI(EGL_OPENGL_API) == EGL_FALSE)
        return false;
    const EGLint wanted[] = {EGL_SURFACE_TYPE, EGL_PBUFFER_BIT, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT, EGL_NONE};
    EGLConfig config = nullptr;
    EGLint found = 0;
    if (eglChooseConfig(display, wanted, &config, 1, &found) == EGL_FALSE || found < 1)
        return false;
    // Without attributes the context is of the highest version that is compatible with what the scene uses.
    const EGLContext context = eglCreateContext(display, config, EGL_NO_CONTEXT, nullptr);
    if (context == EGL_NO_CONTEXT)
        return false;
    if (eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context) == EGL_FALSE || !loadGlEntryPoints()) {
        eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        eglDestroyContext(display, context);
        return false;
    }
    display_ = display;
    context_ = context;
    return true;
}

// Like the view's: eight bits a colour, 24 bits of depth, one sample a pixel.
void OffscreenContext::createFramebuffer() {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &largest);
    GLint viewport[2] = {};
    glGetIntegerv(GL_MAX_VIEWPORT_DIMS, viewport);
    largest = std::min({largest, viewport[0], viewport[1]});
    if (width_ > largest || height_ > largest) {
        problem_ = "a picture has at most " + std::to_string(largest) + " pixels a side here";
        return;
    }
    glGenFramebuffers(1, &framebuffer_);
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    glGenRenderbuffers(1, &colour_);
    glBindRenderbuffer(GL_RENDERBUFFER, colour_);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_RGBA8, width_, height_);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, colour_);
    glGenRenderbuffers(1, &depth_);
    glBindRenderbuffer(GL_RENDERBUFFER, depth_);
    glRenderbufferStorage(GL_RENDERBUFFER, GL_DEPTH24_STENCIL8, width_, height_);
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_STENCIL_ATTACHMENT, GL_RENDERBUFFER, depth_);
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) != GL_FRAMEBUFFER_COMPLETE)
        problem_ = "no picture of " + std::to_string(width_) + " x " + std::to_string(height_) + " pixels to draw into";
}

QImage OffscreenContext::picture() const {
    QImage image(width_, height_, QImage::Format_RGB32);
    if (image.isNull())
        return image;
    const auto bytesPerLine = static_cast<std::size_t>(image.bytesPerLine());
    std::vector<uchar> rows(bytesPerLine * static_cast<std::size_t>(height_));
    glReadPixels(0, 0, width_, height_, GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, rows.data());
    for (int y = 0; y < height_; ++y) {
        auto* const to = reinterpret_cast<QRgb*>(image.scanLine(y));
        const auto* const from =
            reinterpret_cast<const QRgb*>(rows.data() + static_cast<std::size_t>(height_ - 1 - y) * bytesPerLine);
        // Blending leaves alpha below 1; the colours are what the view shows.
        std::transform(from, from + width_, to, [](QRgb pixel) { return pixel | 0xFF000000U; });
    }
    return image;
}
} // namespace sorvane
