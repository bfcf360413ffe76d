// Bodies of a few facets whose signature can be worked out by hand.
#pragma once

#include <array>
#include <cmath>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include "radbytes.h"
#include "signaturebody.h"
#include "temporarydirectory.h"

namespace sorvane {
struct PlainFacet {
    std::array<Vec3d, 3> corners;
    float radiance = 0.0F; // W/cm²/sr
};

using PlainFacets = std::vector<PlainFacet>;

// Two facets; a, b, c, d run counter-clockwise as seen from the side that radiates.
inline void
addRectangle(PlainFacets& facets, const Vec3d& a, const Vec3d& b, const Vec3d& c, const Vec3d& d, float radiance) {
    facets.push_back({{a, b, c}, radiance});
    facets.push_back({{a, c, d}, radiance});
}

// A rectangle around `middle` that faces forwards, `width` along y and `height` along z.
inline void addForwardPlate(PlainFacets& facets, const Vec3d& middle, double width, double height, float radiance) {
    const auto corner = [&](double y, double z) {
        return middle + Vec3d{0.0, y * width / 2.0, z * height / 2.0};
    };
    addRectangle(facets, corner(-1, -1), corner(1, -1), corner(1, 1), corner(-1, 1), radiance);
}

// The six sides of a box around the origin, which radiate as ahead, right, behind, left, above and below.
inline PlainFacets boxFacets(const Vec3d& size, const std::array<float, 6>& radiances) {
    const auto at = [&](double x, double y, double z) {
        return Vec3d{x * size.x / 2.0, y * size.y / 2.0, z * size.z / 2.0};
    };
    PlainFacets facets;
    addRectangle(facets, at(1, -1, -1), at(1, 1, -1), at(1, 1, 1), at(1, -1, 1), radiances[0]);
    addRectangle(facets, at(-1, -1, -1), at(1, -1, -1), at(1, -1, 1), at(-1, -1, 1), radiances[1]);
    addRectangle(facets, at(-1, 1, -1), at(-1, -1, -1), at(-1, -1, 1), at(-1, 1, 1), radiances[2]);
    addRectangle(facets, at(1, 1, -1), at(-1, 1, -1), at(-1, 1, 1), at(1, 1, 1), radiances[3]);
    addRectangle(facets, at(-1, -1, 1), at(1, -1, 1), at(1, 1, 1), at(-1, 1, 1), radiances[4]);
    addRectangle(facets, at(-1, 1, -1), at(1, 1, -1), at(1, -1, -1), at(-1, -1, -1), radiances[5]);
    return facets;
}

// Rings of latitude about z, of so many segments.
inline PlainFacets sphereFacets(double radius, int rings, int segments, float radiance) {
    const auto at = [&](int ring, int segment) {
        const double theta = std::numbers::pi * ring / rings;
        const double phi = 2.0 * std::numbers::pi * (segment % segments) / segments;
        return radius * Vec3d{std::sin(theta) * std::cos(phi), std::sin(theta) * std::sin(phi), std::cos(theta)};
    };
    PlainFacets facets;
    for (int ring = 0; ring < rings; ++ring)
        for (int segment = 0; segment < segments; ++segment) {
            if (ring > 0)
                facets.push_back({{at(ring, segment), at(ring + 1, segment), at(ring, segment + 1)}, radiance});
            if (ring + 1 < rings)
                facets.push_back({{at(ring, segment + 1), at(ring + 1, segment), at(ring + 1, segment + 1)}, radiance});
        }
    return facets;
}

inline constexpr const char* kBlackSurface = "0.0 1.0 0.0 0.3 1 black";

// Flat facets of one reflectance class, as a line of a reflectance file gives it.
inline SignatureFiles writeBody(
    const TemporaryDirectory& folder, const std::string& name, const PlainFacets& facets,
    const std::string& surface = kBlackSurface) {
    std::ostringstream geometry;
    geometry.precision(9);
    geometry << 3 * facets.size() << ' ' << facets.size() << "\n-1 1 -1 1 -1 1\n";
    std::vector<float> radiances;
    for (const PlainFacet& facet : facets) {
        const auto& [a, b, c] = facet.corners;
        const Vec3d normal = unit(cross(b - a, c - a));
        for (const Vec3d& corner : facet.corners)
            geometry << corner.x << ' ' << corner.y << ' ' << corner.z << ' ' << normal.x << ' ' << normal.y << ' '
                     << normal.z << " v\n";
        radiances.push_back(facet.radiance * 1e6F);
    }
    for (std::size_t k = 0; k < facets.size(); ++k)
        geometry << k + 1 << ' ' << 3 * k + 1 << ' ' << 3 * k + 2 << ' ' << 3 * k + 3 << " f\n";
    SignatureFiles files;
    files.geometry = folder.write(name + ".vnl", geometry.str());
    files.reflectance =
        folder.write(name + ".brdf", "BRDF\n1\n" + surface + "\n1 " + std::to_string(facets.size()) + " 1 all\n");
    files.radiance = folder.write(name + ".rad", radBytes(radiances, radiances));
    return files;
}
} // namespace sorvane
