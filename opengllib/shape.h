// Anything that can be placed and drawn in the scene.
#pragma once

#include <array>

#include "matrix.h"
#include "vector.h"

struct Dynamic_Data;

template <class T> struct Rect {
    T left{};
    T right{};
    T bottom{};
    T top{};
    bool operator==(const Rect&) const = default;
};

namespace sorvane {
// The eight corners of a box, w = 1: around one face, then in the same order around the opposite one.
using BoxCorners = std::array<Vector<float>, 8>;

enum class ShapeKind { Hardbody };
} // namespace sorvane

class Shape {
public:
    Shape() = default;
    virtual ~Shape() = default;
    Shape(const Shape&) = delete;
    Shape& operator=(const Shape&) = delete;

    virtual sorvane::ShapeKind ShapeType() const = 0;
    // What the shape takes part in: reflection of light, anti-aliasing, the drawing of bodies, that of exhaust plumes.
    virtual bool DoBRDF() const = 0;
    virtual bool DoAntialias() const = 0;
    virtual bool DoHardbody() const = 0;
    virtual bool DoPlume() const = 0;

    // World position, and turns about x, y and z in degrees as BuildTransform takes them.
    virtual void SetWorldPos(float x, float y, float z) = 0;
    virtual void SetOrientation(float a, float b, float c) = 0;
    virtual void SetWorldPosAndOrientation(float x, float y, float z, float a, float b, float c) = 0;

    // Draws the shape into the current GL context, whose model-view matrix is the view of the world.
    virtual void Render(Dynamic_Data* data) = 0;

    // The centre of the shape in the coordinates that `view` leads to from the world's.
    virtual Vector<float> Centroid(const Matrix<float>& view) const = 0;
    // The rectangle that the shape's box covers on the near plane, `near` in front of the eye, seen through `view`, a
    // transform from world to eye coordinates (the eye looks along -z). False, leaving the rectangle alone, when all of
    // the box is nearer than that.
    virtual bool NearPlaneProjection(Rect<float>& rect, const Matrix<float>& view, const float& near) const = 0;
    // The box in model coordinates, and in the world's.
    virtual sorvane::BoxCorners BBox() const = 0;
    virtual sorvane::BoxCorners GetTransformedBBox() const = 0;
};
