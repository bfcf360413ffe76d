// How the surfaces of a frame hide each other: the one place that decides how their depths are kept apart.
#pragma once

#include <functional>
#include <optional>

namespace sorvane {
// Depths are distances from the eye along the line of sight. Stored the plain way, 24 bits from the near plane to the
// far one tell two surfaces at 2,000 units apart only when 2.4 units lie between them.
enum class DepthWay {
    ReversedFloat, // 32-bit float, 1 at the near plane and 0 at the far one: a part in ten millions everywhere
    Slices,        // the framebuffer's own bits, for one slice of the range after the other, the farthest one first
    OneRange,      // the framebuffer's own bits for the whole range, to compare with
};

// What SORVANE_DEPTH asks for: "slices" or "one-range"; nothing else counts.
std::optional<DepthWay> askedDepthWay();

// From the nearest to the farthest point of something. By default anywhere.
struct DepthInterval {
    double nearest = 0.0;
    double farthest = 1.0e300;
};

// The part of the range that is being drawn. Neighbours overlap a little, so that a surface that goes through both has
// no gap.
struct DepthSlice {
    double nearest = 0.0;
    double farthest = 0.0;
    double ownFrom = 0.0; // what must not be drawn twice belongs to the slice from here,
    double ownTo = 0.0;   // exclusively, to here
    bool isWhole = false; // all that there is

    // Whether some of it may be in the slice.
    bool reaches(const DepthInterval& depths) const {
        return !(depths.nearest > farthest) && !(depths.farthest < nearest);
    }
    bool owns(double depth) const { return isWhole || (depth >= ownFrom && depth < ownTo); }
};

// Draws frames in the best way that the context and the current framebuffer have. The member functions and, once
// something has been drawn, the destructor need the context current.
class FrameDepth {
public:
    FrameDepth() = default;
    ~FrameDepth();
    FrameDepth(const FrameDepth&) = delete;
    FrameDepth& operator=(const FrameDepth&) = delete;

    // Clears the current framebuffer's colours, which take the frame, and calls `drawSlice` for each slice with its
    // depth cleared and its projection loaded: the current projection, with its x, its y and what it clips, between
    // kNearDepth and kFarDepth.
    // Projection and framebuffer are as before at the end.
    void draw(const std::function<void(const DepthSlice&)>& drawSlice);

private:
    bool bindFloatDepth(int framebuffer);
    void drawInFloat(const std::function<void(const DepthSlice&)>& drawSlice);

    std::optional<DepthWay> way_; // not known before the first frame
    unsigned framebuffer_ = 0;    // the current one's colours with a depth of its own
    unsigned depth_ = 0;
    int size_[3] = {}; // of the depth: width, height, samples
};

// While it lives, lines go through all slices unclipped, so that their pattern runs on: what lies beyond the slice
// fails the depth test, and what lies before it is drawn over by nearer slices.
class LinesAcrossSlices {
public:
    explicit LinesAcrossSlices(const DepthSlice& slice);
    ~LinesAcrossSlices();
    LinesAcrossSlices(const LinesAcrossSlices&) = delete;
    LinesAcrossSlices& operator=(const LinesAcrossSlices&) = delete;

private:
    bool isOn_;
};
} // namespace sorvane
