// How the surfaces of a frame hide each other: the one place that decides how their depths are kept apart.
#include "framedepth.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

#include "glapi.h"
#include "projection.h"

namespace sorvane {
namespace {
using DrawSlice = std::function<void(const DepthSlice&)>;

// The bounds of the slices: of 24 bits each tells apart a part in 200,000 of a unit at 200 units, a part in 3,000 at
// 2,000 and a part in 300 at 20,000. Near the eye a slice may reach farther in proportion.
constexpr std::array<double, 5> kBounds = {kNearDepth, 40.0, 800.0, 8000.0, kFarDepth};
// A slice begins this part of its nearest depth earlier than the one before it ends: enough for a pixel's row of ground
// that is seen at a flat angle.
constexpr double kOverlap = 0.01;

constexpr DepthSlice kWholeRange = {kNearDepth, kFarDepth, kNearDepth, kFarDepth, true};

DepthSlice sliceNumber(std::size_t number) {
    const bool isNearest = number == 0;
    const bool isFarthest = number + 2 == kBounds.size();
    const auto middleOfOverlap = [](double bound) {
        return bound * (1.0 - kOverlap / 2.0);
    };
    return {
        isNearest ? kNearDepth : kBounds[number] * (1.0 - kOverlap), kBounds[number + 1],
        isNearest ? 0.0 : middleOfOverlap(kBounds[number]),
        isFarthest ? DepthInterval{}.farthest : middleOfOverlap(kBounds[number + 1]), false};
}

// The projection as it was set, given back at the end.
class SavedProjection {
public:
    SavedProjection() { glGetDoublev(GL_PROJECTION_MATRIX, matrix_.data()); }
    ~SavedProjection() { load(matrix_); }
    SavedProjection(const SavedProjection&) = delete;
    SavedProjection& operator=(const SavedProjection&) = delete;

    // Loads it with other depths: z = scale · z + offset before the division by w, z pointing at the eye.
    void loadWith(double scale, double offset) const {
        std::array<GLdouble, 16> matrix = matrix_;
        matrix[10] = scale;
        matrix[14] = offset;
        load(matrix);
    }

private:
    static void load(const std::array<GLdouble, 16>& matrix) {
        glMatrixMode(GL_PROJECTION);
        glLoadMatrixd(matrix.data());
        glMatrixMode(GL_MODELVIEW);
    }

    std::array<GLdouble, 16> matrix_{};
};

bool hasFloatDepth() {
    return GLEW_VERSION_3_2 && (GLEW_VERSION_4_5 || GLEW_ARB_clip_control);
}

bool hasDepthClamp() {
    return GLEW_VERSION_3_2 || GLEW_ARB_depth_clamp;
}

// Gives the framebuffer that is bound the colours of another one.
void takeColours(GLint type, GLint name) {
    if (type == GL_RENDERBUFFER)
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, static_cast<GLuint>(name));
    else
        glFramebufferTexture(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, static_cast<GLuint>(name), 0);
}

void drawWhole(const DrawSlice& drawSlice) {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    drawSlice(kWholeRange);
}

void drawInSlices(const DrawSlice& drawSlice) {
    const SavedProjection projection;
    glLoadIdentity();
    const GLdouble behindNearPlane[4] = {0.0, 0.0, -1.0, -kNearDepth};
    const GLdouble beforeFarPlane[4] = {0.0, 0.0, 1.0, kFarDepth};
    glClipPlane(GL_CLIP_PLANE0, behindNearPlane);
    glClipPlane(GL_CLIP_PLANE1, beforeFarPlane);
    glClear(GL_COLOR_BUFFER_BIT);
    for (std::size_t number = kBounds.size() - 1; number-- > 0;) {
        const DepthSlice slice = sliceNumber(number);
        const double length = slice.farthest - slice.nearest;
        projection.loadWith(-(slice.farthest + slice.nearest) / length, -2.0 * slice.farthest * slice.nearest / length);
        glClear(GL_DEPTH_BUFFER_BIT);
        drawSlice(slice);
    }
}
} // namespace

std::optional<DepthWay> askedDepthWay() {
    const char* const value = std::getenv("SORVANE_DEPTH");
    const std::string_view asked = value == nullptr ? "" : value;
    if (asked == "slices")
        return DepthWay::Slices;
    if (asked == "one-range")
        return DepthWay::OneRange;
    return std::nullopt;
}

FrameDepth::~FrameDepth() {
    if (framebuffer_ != 0)
        glDeleteFramebuffers(1, &framebuffer_);
    if (depth_ != 0)
        glDeleteRenderbuffers(1, &depth_);
}

void FrameDepth::draw(const DrawSlice& drawSlice) {
    if (!way_)
        way_ = askedDepthWay().value_or(hasFloatDepth() ? DepthWay::ReversedFloat : DepthWay::Slices);
    if (way_ == DepthWay::OneRange)
        return drawWhole(drawSlice);
    GLint framebuffer = 0;
    if (way_ == DepthWay::ReversedFloat) {
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer);
        if (bindFloatDepth(framebuffer)) {
            drawInFloat(drawSlice);
            glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(framebuffer));
            return;
        }
    }
    drawInSlices(drawSlice);
}

// False when the framebuffer is the screen's or takes no other depth; it is bound then as before.
bool FrameDepth::bindFloatDepth(int framebuffer) {
    if (framebuffer == 0)
        return false;
    GLint type = GL_NONE;
    GLint name = 0;
    const auto ask = [](GLenum what, GLint& answer) {
        glGetFramebufferAttachmentParameteriv(GL_DRAW_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, what, &answer);
    };
    ask(GL_FRAMEBUFFER_ATTACHMENT_OBJECT_TYPE, type);
    if (type == GL_NONE)
        return false;
    ask(GL_FRAMEBUFFER_ATTACHMENT_OBJECT_NAME, name);
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    // At least as large as the colours, which fractional scaling may round up where the viewport is rounded down.
    std::array<int, 3> size = {viewport[0] + viewport[2] + 1, viewport[1] + viewport[3] + 1, 0};
    glGetIntegerv(GL_SAMPLES, &size[2]);

    if (framebuffer_ == 0) {
        glGenFramebuffers(1, &framebuffer_);
        glGenRenderbuffers(1, &depth_);
    }
    glBindFramebuffer(GL_FRAMEBUFFER, framebuffer_);
    if (!std::ranges::equal(size, size_)) {
        std::ranges::copy(size, size_);
        glBindRenderbuffer(GL_RENDERBUFFER, depth_);
        glRenderbufferStorageMultisample(GL_RENDERBUFFER, size[2], GL_DEPTH_COMPONENT32F, size[0], size[1]);
        glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_DEPTH_ATTACHMENT, GL_RENDERBUFFER, depth_);
    }
    takeColours(type, name);
    if (glCheckFramebufferStatus(GL_FRAMEBUFFER) == GL_FRAMEBUFFER_COMPLETE)
        return true;
    glBindFramebuffer(GL_FRAMEBUFFER, static_cast<GLuint>(framebuffer));
    way_ = DepthWay::Slices;
    return false;
}

void FrameDepth::drawInFloat(const DrawSlice& drawSlice) {
    const SavedProjection projection;
    constexpr double kLength = kFarDepth - kNearDepth;
    projection.loadWith(kNearDepth / kLength, kNearDepth * kFarDepth / kLength);
    glClipControl(GL_LOWER_LEFT, GL_ZERO_TO_ONE);
    glDepthFunc(GL_GREATER);
    glClearDepth(0.0);
    drawWhole(drawSlice);
    glClearDepth(1.0);
    glDepthFunc(GL_LESS);
    glClipControl(GL_LOWER_LEFT, GL_NEGATIVE_ONE_TO_ONE);
    // The colours belong to another framebuffer, which may end before the next frame.
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_RENDERBUFFER, 0);
}

LinesAcrossSlices::LinesAcrossSlices(const DepthSlice& slice) : isOn_(!slice.isWhole && hasDepthClamp()) {
    if (!isOn_)
        return;
    glEnable(GL_DEPTH_CLAMP);
    glEnable(GL_CLIP_PLANE0);
    glEnable(GL_CLIP_PLANE1);
}

LinesAcrossSlices::~LinesAcrossSlices() {
    if (!isOn_)
        return;
    glDisable(GL_DEPTH_CLAMP);
    glDisable(GL_CLIP_PLANE0);
    glDisable(GL_CLIP_PLANE1);
}
} // namespace sorvane
