// A framebuffer of 32-bit floats: what is drawn into it are numbers with a unit, not colours.
#pragma once

#include <vector>

namespace sorvane {
// Draws and reads rectangles of numbers, one channel, neither clamped nor blended. The member functions and, once
// something has been drawn, the destructor need the GL context current.
class RadianceBuffer {
public:
    RadianceBuffer() = default;
    ~RadianceBuffer();
    RadianceBuffer(const RadianceBuffer&) = delete;
    RadianceBuffer& operator=(const RadianceBuffer&) = delete;

    // Whether the current GL context has such framebuffers.
    static bool isSupported();

    // Makes `width` × `height` numbers, both at least 1, what is drawn into, with the viewport over all of them. False
    // when the context has no framebuffer of that size. The depths of what is drawn are FrameDepth's.
    bool bind(int width, int height);

    // The numbers of the rectangle that was bound last, the bottom row first.
    std::vector<float> read() const;

private:
    unsigned framebuffer_ = 0;
    unsigned colour_ = 0;
    unsigned depth_ = 0;
    int width_ = 0;
    int height_ = 0;
};

// While it lives, what is drawn is written as it is: no clamping, blending, lighting or smoothing, hidden back faces.
// At the end all GL state that drawing radiances changes is as before: framebuffer, viewport, matrices, clear colour.
class RadianceDrawing {
public:
    // What is to be where nothing is drawn.
    explicit RadianceDrawing(float background);
    ~RadianceDrawing();
    RadianceDrawing(const RadianceDrawing&) = delete;
    RadianceDrawing& operator=(const RadianceDrawing&) = delete;

private:
    int framebuffer_ = 0;
};
} // namespace sorvane
