// Surfaces of triangular facets, for the bodies of the demonstration.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "vec3.h"

namespace sorvane {
// What a facet is made of: the reflectance class.
enum class Material { Paint, Metal, Canopy, Nozzle, Radome, Duct };
inline constexpr std::size_t kMaterials = 6;

struct Part {
    Material material = Material::Paint;
    double temperature = 268.0; // kelvin
};

struct MeshFacet {
    std::array<std::size_t, 3> corners{}; // points of the mesh, counter-clockwise seen from outside
    Part part;
};

// Model axes: x forward, y left, z up, in metres.
struct Mesh {
    std::vector<Vec3d> points;
    std::vector<MeshFacet> facets;
};

// Half the cross product of two edges: outward, as long as the facet is large.
Vec3d areaVector(const Mesh& mesh, const MeshFacet& facet);
Vec3d centroid(const Mesh& mesh, const MeshFacet& facet);

// What a closed surface encloses, negative when its facets face inwards.
double signedVolume(const Mesh& mesh);

// Adds the points and facets of `other`, facets last.
void append(Mesh& mesh, const Mesh& other);

// The same at the other side of the plane y = 0.
Mesh mirrored(const Mesh& mesh);

// The same turned about a unit axis through `hub`, right-handed.
Mesh turned(const Mesh& mesh, const Vec3d& hub, const Vec3d& axis, double degrees);
} // namespace sorvane

// For each facet the normals of its corners: the mean over the facets that meet in the point without an edge sharper
// than about 40 degrees.
std::vector<std::array<sorvane::Vec3d, 3>> cornerNormals(const sorvane::Mesh& mesh);
