// The camera's look-at transform, for coordinates that are relative to a point near what is drawn.
#pragma once

#include <array>
#include <span>

#include "framedepth.h"
#include "matrix.h"
#include "vertexbuffer.h"

namespace sorvane {
class Camera;

// Far from the world's origin single precision has no digits left for the details of a body, and GL would lose more of
// them in its sums. So each thing is drawn with coordinates relative to a world position near it, its origin, and the
// way from the eye to that origin is worked out in double precision.
class LookAt {
public:
    explicit LookAt(const Camera& camera);
    // From `eye` along `look`, of any length.
    LookAt(const Vector<float>& eye, const Vector<float>& look);

    const Vector<float>& eye() const { return eye_; } // world

    // The model-view matrix for coordinates relative to the eye: a rotation. A camera that looks straight up or down
    // has none: all points then fall onto one line, and nothing is seen.
    const Matrix<float>& rotation() const { return rotation_; }
    // The model-view matrix for coordinates relative to `origin`, a world position.
    Matrix<float> modelView(std::span<const float, 3> origin) const;
    // A world position in eye coordinates: right, up and, negative, along the line of sight.
    std::array<double, 3> inEye(std::span<const float, 3> position) const;
    // How far along the line of sight a world position lies, and a box of coordinates relative to `origin`.
    double depthOf(std::span<const float, 3> position) const;
    DepthInterval depthsOf(const Box& box, std::span<const float, 3> origin) const;
    // Loads the model-view matrix into GL. Needs a current GL context.
    void load(std::span<const float, 3> origin) const;
    // Loads the matrix for world coordinates into GL, which composes it in single precision. Needs a current GL
    // context. Grid and terrain are drawn with it: they coincide in places, where the last bit of the matrix decides
    // which of them is seen.
    void loadWorld() const;

private:
    Vector<float> eye_;
    Vector<float> look_;
    Matrix<float> rotation_ = Matrix<float>::identity();
};
} // namespace sorvane
