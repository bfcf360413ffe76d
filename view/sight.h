// What of the world a picture shows.
#pragma once

#include <array>
#include <span>

#include "lookat.h"
#include "projection.h"

namespace sorvane {
// The pyramid between the sides of the picture, a few pixels wider, so that what is as wide as a line or a point is in
// it when a part of it is. Depths are the DepthSlice's.
class Sight {
public:
    Sight(const LookAt& lookAt, const WindowTransform& window);

    // Whether something within a sphere about a world position, or within a box of coordinates relative to `origin`,
    // may be in the picture. What is nowhere may be.
    bool reaches(std::span<const float, 3> position, double radius) const;
    bool reaches(const Box& box, std::span<const float, 3> origin) const;

    // How many of the framebuffer's pixels a sphere is across, infinite with the eye in it.
    double pixelsAcross(std::span<const float, 3> position, double radius) const;

    // How many of them a length takes at the nearest place of a box, infinite with the eye in or before it.
    double pixelsOf(double length, const Box& box, std::span<const float, 3> origin) const;

private:
    struct Plane {
        std::array<double, 3> normal{}; // in eye coordinates, of unit length, towards the inside
        double offset = 0.0;

        double distanceOf(const std::array<double, 3>& point) const {
            return normal[0] * point[0] + normal[1] * point[1] + normal[2] * point[2] + offset;
        }
    };

    const LookAt& lookAt_;
    std::array<Plane, 4> sides_{};
    double pixelsPerTangent_;
};
} // namespace sorvane
