// OpenGL without a window, a display or an X server.
#pragma once

#include <optional>
#include <string>

#include <QImage>

#include "problem.h"

namespace sorvane {
// A context in the compatibility profile, as the viewer draws in, current from construction to destruction on the
// thread that made it, with a picture to draw into. A graphics processor's own display is preferred; without one, or
// with LIBGL_ALWAYS_SOFTWARE set, Mesa draws in software.
class OffscreenContext {
public:
    OffscreenContext(int width, int height);
    ~OffscreenContext();
    OffscreenContext(const OffscreenContext&) = delete;
    OffscreenContext& operator=(const OffscreenContext&) = delete;

    // Why nothing can be drawn; nothing when all is well.
    const std::optional<sorvane::Problem>& problem() const { return problem_; }

    // What was drawn, in Format_RGB32, top row first, without alpha. Waits for the drawing.
    QImage picture() const;

private:
    void createContext();
    bool createContextOn(void* display);
    bool createContextOnDevice();
    void createFramebuffer();

    int width_;
    int height_;
    void* display_ = nullptr;
    void* context_ = nullptr;
    unsigned framebuffer_ = 0;
    unsigned colour_ = 0;
    unsigned depth_ = 0;
    std::optional<sorvane::Problem> problem_;
};
} // namespace sorvane
