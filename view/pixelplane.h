// The pixels of a perspective picture as parts of the sphere of directions.
#pragma once

#include <array>

namespace sorvane {
// A direction in eye coordinates, (right, up, -1): tangents from the line of sight.
struct Tangents {
    double right = 0.0;
    double up = 0.0;
};

// A rectangle of tangents.
struct TangentBox {
    double left = 0.0;
    double right = 0.0;
    double bottom = 0.0;
    double top = 0.0;

    bool contains(const Tangents& at) const {
        return at.right >= left && at.right <= right && at.up >= bottom && at.up <= top;
    }
};

// The solid angle in sr of what lies within the box, as seen from the eye: the sum over its corners of
// ±atan(x y / sqrt(1 + x² + y²)). After Khadzhi's formula for a rectangular aperture, as in Mathar, "Solid angle of a
// rectangular plate", 2015.
double solidAngleOf(const TangentBox& box);

// Square pixels, as applyProjection has them: the full vertical field of view over the height.
class PixelPlane {
public:
    PixelPlane(double fieldOfViewDegrees, int width, int height);

    int width() const { return width_; }
    int height() const { return height_; }
    // The side of a pixel in tangents.
    double pitch() const { return pitch_; }

    // A pixel, rows counted from the top; it may lie outside the picture.
    TangentBox boxOf(int column, int row) const;
    TangentBox box() const;
    double solidAngleOf(int column, int row) const { return sorvane::solidAngleOf(boxOf(column, row)); }
    // Of a pixel in the middle of the picture: of the middle one, or about the corner that the four middle ones share.
    double centreSolidAngle() const;

    // Columns and rows as real numbers, from the picture's top left corner.
    double columnOf(const Tangents& at) const { return at.right / pitch_ + width_ / 2.0; }
    double rowOf(const Tangents& at) const { return height_ / 2.0 - at.up / pitch_; }

private:
    int width_;
    int height_;
    double pitch_;
};
} // namespace sorvane
