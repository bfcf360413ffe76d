// Bodies of which much lies closely behind something else, and which of their facets rays see first.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "bvh.h"
#include "camera.h"
#include "hardbody.h"
#include "mesh.h"
#include "temporarydirectory.h"

namespace sorvane {
// Shells around each other about the x axis, of which all have holes, and stacks of thin plates at their sides. The
// innermost shell and the plates come first.
struct NestedShape {
    double length = 0.0; // units
    int shells = 0;
    int rings = 0; // of patches of two facets each, on each shell
    int segments = 0;
    int plates = 0; // in each of the two stacks
};
Mesh nestedMesh(const NestedShape& shape);

// A number for every facet, told by the greys of two pictures: one body's greys are its high digits, the other's its
// low ones.
class FacetNumbers {
public:
    static constexpr int kBase = 250;
    enum Digit { High, Low };

    // Writes the mesh's files into the folder and loads them. Needs a current GL context.
    static std::unique_ptr<Hardbody>
    bodyOf(const Mesh& mesh, Digit digit, const TemporaryDirectory& folder, const std::string& shaders);
    // Nothing where both are black.
    static std::optional<std::size_t> number(int highGrey, int lowGrey);
};

// A picture of square pixels as the camera sees it, worked out ray by ray in double precision.
class RayCaster {
public:
    // The mesh lies at `origin` without being turned.
    RayCaster(
        const Mesh& mesh, const Vec3d& origin, const Camera& camera, double fieldOfViewDegrees, int width, int height);

    // Unit, from the eye through a point of the picture, in pixels from its top left corner.
    Vec3d directionAt(double x, double y) const;
    // The facet that faces the eye and is met first there.
    std::optional<std::size_t> facetAt(double x, double y) const;

private:
    Mesh facing_;                      // the facets that face the eye, in coordinates relative to the eye
    std::vector<std::size_t> numbers_; // which they are
    std::optional<Bvh> tree_;
    Vec3d forward_, right_, up_; // right and up as long as half a picture's height at the distance 1
    double width_, height_;
};
} // namespace sorvane
