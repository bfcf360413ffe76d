// An OpenGL context without a window, for tests and benchmarks of what is drawn.
#pragma once

#include <vector>

#include <GL/glew.h>

// Current from construction to destruction or another one's construction, in the compatibility profile, with GLEW
// initialised and a picture of 32-bit floats and a depth buffer to draw into. Values of the picture are not clamped.
class GlContext {
public:
    // With objects of its own, or those of `sharing`.
    GlContext(int width, int height, const GlContext* sharing = nullptr);
    ~GlContext();
    GlContext(const GlContext&) = delete;
    GlContext& operator=(const GlContext&) = delete;

    // Whether this machine gave a context; nothing may be drawn otherwise.
    bool isUsable() const { return isUsable_; }

    // Again, after another one was.
    void makeCurrent() const;

    // Red, green, blue and alpha of every pixel, row by row from the bottom.
    std::vector<float> pixels() const;

    // What who draws has to leave as it was: depths of stacks, bindings, arrays and the model-view matrix.
    static std::vector<GLint> state();

private:
    bool createContext(const GlContext* sharing);
    bool createPicture();

    int width_;
    int height_;
    void* display_ = nullptr;
    void* context_ = nullptr;
    GLuint framebuffer_ = 0;
    GLuint colour_ = 0;
    GLuint depth_ = 0;
    bool isUsable_ = false;
};
