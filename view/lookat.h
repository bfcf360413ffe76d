// The camera's look-at transform, taken from points of reference near what is drawn.
#pragma once

#include <span>

#include "matrix.h"

class Camera;

// Far from the world's origin single precision has no digits left for the details of a body, and sums of large
// coordinates in GL lose what there is. So whatever is drawn counts its coordinates from a world position near it, and
// where that position lies from the eye is worked out in double precision.
class LookAt {
public:
    explicit LookAt(const Camera& camera);

    const Vector<float>& eye() const { return eye_; } // world

    // The model-view matrix for coordinates that count from the eye: a rotation. Looking straight along the camera's up
    // direction there is none, and everything collapses.
    const Matrix<float>& rotation() const { return rotation_; }
    // That for coordinates that count from `origin`, a world position.
    Matrix<float> modelView(std::span<const float, 3> origin) const;
    // Makes that matrix the current one. Needs a current GL context, as the next one.
    void load(std::span<const float, 3> origin) const;
    // Makes that for world coordinates the current one, composed by GL itself in single precision. What stands about
    // the world's origin is drawn with it: where grid and ground coincide, the last bit decides which of them is seen.
    void loadWorld() const;

private:
    Vector<float> eye_;
    Vector<float> look_;
    Matrix<float> rotation_ = Matrix<float>::identity();
};
