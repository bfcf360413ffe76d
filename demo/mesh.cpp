// Surfaces of triangular facets, for the bodies of the demonstration.
#include "mesh.h"

#include <cmath>
#include <numbers>
#include <utility>

using namespace sorvane;

namespace sorvane {
Vec3d areaVector(const Mesh& mesh, const MeshFacet& facet) {
    const Vec3d& first = mesh.points[facet.corners[0]];
    return 0.5 * cross(mesh.points[facet.corners[1]] - first, mesh.points[facet.corners[2]] - first);
}

Vec3d centroid(const Mesh& mesh, const MeshFacet& facet) {
    return 1.0 / 3.0 * (mesh.points[facet.corners[0]] + mesh.points[facet.corners[1]] + mesh.points[facet.corners[2]]);
}

double signedVolume(const Mesh& mesh) {
    double volume = 0.0;
    for (const MeshFacet& facet : mesh.facets)
        volume += dot(mesh.points[facet.corners[0]], areaVector(mesh, facet)) / 3.0;
    return volume;
}

void append(Mesh& mesh, const Mesh& other) {
    const std::size_t before = mesh.points.size();
    mesh.points.insert(mesh.points.end(), other.points.begin(), other.points.end());
    for (MeshFacet facet : other.facets) {
        for (std::size_t& corner : facet.corners)
            corner += before;
        mesh.facets.push_back(facet);
    }
}

Mesh mirrored(const Mesh& mesh) {
    Mesh result = mesh;
    for (Vec3d& point : result.points)
        point.y = -point.y;
    for (MeshFacet& facet : result.facets)
        std::swap(facet.corners[1], facet.corners[2]);
    return result;
}

// Rodrigues' formula.
Mesh turned(const Mesh& mesh, const Vec3d& hub, const Vec3d& axis, double degrees) {
    const double angle = degrees * std::numbers::pi / 180.0;
    Mesh result = mesh;
    for (Vec3d& point : result.points) {
        const Vec3d arm = point - hub;
        point = hub + std::cos(angle) * arm + std::sin(angle) * cross(axis, arm) +
                (1.0 - std::cos(angle)) * dot(axis, arm) * axis;
    }
    return result;
}
} // namespace sorvane

std::vector<std::array<Vec3d, 3>> cornerNormals(const Mesh& mesh) {
    constexpr double kCosineOfCrease = 0.766;
    std::vector<Vec3d> areas;
    std::vector<std::vector<std::size_t>> facetsAt(mesh.points.size());
    for (const MeshFacet& facet : mesh.facets) {
        for (const std::size_t corner : facet.corners)
            facetsAt[corner].push_back(areas.size());
        areas.push_back(areaVector(mesh, facet));
    }
    std::vector<std::array<Vec3d, 3>> normals(mesh.facets.size());
    for (std::size_t i = 0; i < mesh.facets.size(); ++i)
        for (std::size_t corner = 0; corner < 3; ++corner) {
            Vec3d sum;
            for (const std::size_t other : facetsAt[mesh.facets[i].corners[corner]])
                if (dot(areas[i], areas[other]) >= kCosineOfCrease * length(areas[i]) * length(areas[other]))
                    sum = sum + areas[other];
            normals[i][corner] = unit(sum);
        }
    return normals;
}
