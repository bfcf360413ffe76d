// How much of each facet of a body can be seen from a place: a rasteriser on the processor.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>

#include "signaturebody.h"

namespace sorvane {
// Where a body is seen from.
struct Viewpoint {
    Vec3d towards;                                          // unit, in model axes
    double range = std::numeric_limits<double>::infinity(); // from the body's origin, in its units

    bool isFar() const { return range == std::numeric_limits<double>::infinity(); }
    // From a place of the body to the viewpoint; of length 1 when that is far.
    Vec3d from(const Vec3d& place) const { return isFar() ? towards : range * towards - place; }
};

// Facets are seen from the side from which their corners run counter-clockwise; those turned away neither show nor hide
// anything, as in the viewer. Each has its share of visible pixels of those that it covers: with its exact projected
// area a body of which nothing is hidden is as large as it is, whatever the pixels.
class FacetVisibility {
public:
    static constexpr int kUsualPixels = 512; // to a side

    explicit FacetVisibility(int pixels = kUsualPixels);

    // Fills `shares`, 0 to 1 for each facet. What reaches as far as the viewpoint isn't seen.
    void look(const SignatureBody& body, const Viewpoint& viewpoint, std::vector<float>& shares);

private:
    struct Corner {
        double x = 0.0; // pixels
        double y = 0.0;
        double depth = 0.0; // grows towards the viewer, evenly in the picture, about by units of length
    };
    struct Drawn {
        std::uint32_t facet = 0; // by number in the body
        std::array<Corner, 3> corners{};
        std::uint32_t covered = 0; // pixels
        std::uint32_t visible = 0;
    };
    struct DepthPlane;

    void project(const SignatureBody& body, const Viewpoint& viewpoint);
    void draw(std::uint32_t number);
    void drawRow(std::uint32_t number, int y, double left, double right, const DepthPlane& plane);
    bool isMiddleVisible(const Drawn& drawn) const;
    bool hides(const Drawn& front, const Corner& at) const;

    int pixels_;
    std::vector<float> depths_;         // of the pixels
    std::vector<std::uint32_t> owners_; // of the pixels: numbers in drawn_
    std::vector<Drawn> drawn_;          // the facets that face the viewer
    double pixelSize_ = 0.0;            // the larger side, in units of length
};
} // namespace sorvane
