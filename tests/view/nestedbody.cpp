// Bodies of which much lies closely behind something else, and which of their facets rays see first.
#include "nestedbody.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "body.h"
#include "radbytes.h"

namespace sorvane {
namespace {
constexpr std::size_t kOutside = static_cast<std::size_t>(-1); // a ray that starts from no facet

// Whether a patch is left out: a third of them, without a pattern.
bool isHole(int shell, int ring, int segment) {
    const unsigned mixed = static_cast<unsigned>(shell * 7919 + ring * 104729 + segment * 1299709) * 2654435761U;
    return (mixed >> 16U) % 3 == 0;
}

void addShell(Mesh& mesh, const NestedShape& shape, int shell) {
    const double size = (shell + 1.0) / shape.shells;
    const std::size_t first = mesh.points.size();
    for (int ring = 0; ring <= shape.rings; ++ring) {
        const double along = 0.05 + 0.9 * ring / shape.rings;
        const double radius = 0.13 * shape.length * size * std::sin(std::numbers::pi * along);
        for (int segment = 0; segment < shape.segments; ++segment) {
            const double angle = 2.0 * std::numbers::pi * segment / shape.segments;
            mesh.points.push_back({shape.length * (along - 0.5), radius * std::cos(angle), radius * std::sin(angle)});
        }
    }
    const auto point = [&](int ring, int segment) {
        return first + static_cast<std::size_t>(ring * shape.segments + segment % shape.segments);
    };
    for (int ring = 0; ring < shape.rings; ++ring)
        for (int segment = 0; segment < shape.segments; ++segment) {
            if (isHole(shell, ring, segment))
                continue;
            const std::size_t a = point(ring, segment);
            const std::size_t b = point(ring + 1, segment);
            const std::size_t c = point(ring + 1, segment + 1);
            const std::size_t d = point(ring, segment + 1);
            mesh.facets.push_back({{a, c, b}, {}});
            mesh.facets.push_back({{a, d, c}, {}});
        }
}

// A box between two corners.
void addPlate(Mesh& mesh, const Vec3d& low, const Vec3d& high) {
    const std::size_t first = mesh.points.size();
    for (std::size_t corner = 0; corner < 8; ++corner)
        mesh.points.push_back(
            {(corner & 1U) != 0 ? high.x : low.x, (corner & 2U) != 0 ? high.y : low.y,
             (corner & 4U) != 0 ? high.z : low.z});
    constexpr std::size_t kSides[6][4] = {{0, 2, 3, 1}, {4, 5, 7, 6}, {0, 1, 5, 4},
                                          {2, 6, 7, 3}, {0, 4, 6, 2}, {1, 3, 7, 5}};
    for (const auto& [a, b, c, d] : kSides) {
        mesh.facets.push_back({{first + a, first + b, first + c}, {}});
        mesh.facets.push_back({{first + a, first + c, first + d}, {}});
    }
}

} // namespace

Mesh nestedMesh(const NestedShape& shape) {
    Mesh mesh;
    const double unit = shape.length / 12.0;
    for (const double side : {-1.0, 1.0})
        for (int plate = 0; plate < shape.plates; ++plate) {
            const double height = 0.08 * unit * (plate - shape.plates / 2.0);
            const double shift = 0.11 * unit * plate;
            const double inner = side * (1.7 + 0.05 * plate) * unit;
            const double outer = inner + side * 2.5 * unit;
            addPlate(
                mesh, {-2.0 * unit + shift, std::min(inner, outer), height},
                {2.0 * unit + shift, std::max(inner, outer), height + 0.02 * unit});
        }
    for (int shell = 0; shell < shape.shells; ++shell)
        addShell(mesh, shape, shell);
    return mesh;
}

std::unique_ptr<Hardbody>
FacetNumbers::bodyOf(const Mesh& mesh, Digit digit, const TemporaryDirectory& folder, const std::string& shaders) {
    const Body files{mesh, 0.0, {}};
    const std::string stem = digit == High ? "high" : "low";
    std::vector<float> greys; // in millionths of W/cm²/sr
    for (std::size_t facet = 0; facet < mesh.facets.size(); ++facet)
        greys.push_back(static_cast<float>(1 + (digit == High ? facet / kBase : facet % kBase)));
    const std::string geometry = folder.write(stem + ".vnl", geometryText(files));
    const std::string reflectance = folder.write(stem + ".brdf", reflectanceText(files));
    const std::string signature = folder.write(stem + ".rad", radBytes(greys, greys));
    auto body = std::make_unique<Hardbody>();
    constexpr float kGreyOfAMillionth = 1.0e6F / 255.0F;
    if (!body->Init(
            reflectance, geometry, signature, shaders, "", true, true, false, false, false, 0.0F, 0.0F, 0.0F, 0.0F,
            0.0F, 0.0F, kGreyOfAMillionth, 0.0F, 0.0F, 0.0F))
        return nullptr;
    return body;
}

std::optional<std::size_t> FacetNumbers::number(int highGrey, int lowGrey) {
    if (highGrey == 0 && lowGrey == 0)
        return std::nullopt;
    return static_cast<std::size_t>((highGrey - 1) * kBase + lowGrey - 1);
}

RayCaster::RayCaster(
    const Mesh& mesh, const Vec3d& origin, const Camera& camera, double fieldOfViewDegrees, int width, int height)
    : width_(width), height_(height) {
    const auto vec3 = [](const Vector<float>& v) {
        return Vec3d{v.ElementAt(0), v.ElementAt(1), v.ElementAt(2)};
    };
    forward_ = unit(vec3(camera.look()));
    const double half = std::tan(fieldOfViewDegrees * std::numbers::pi / 360.0);
    const Vec3d right = unit(cross(forward_, {0.0, 0.0, -1.0}));
    right_ = half * right;
    up_ = half * cross(right, forward_);
    for (const Vec3d& point : mesh.points)
        facing_.points.push_back(point + origin - vec3(camera.eye()));
    for (std::size_t facet = 0; facet < mesh.facets.size(); ++facet) {
        const MeshFacet& candidate = mesh.facets[facet];
        if (dot(areaVector(facing_, candidate), facing_.points[candidate.corners[0]]) >= 0.0)
            continue;
        facing_.facets.push_back(candidate);
        numbers_.push_back(facet);
    }
    tree_.emplace(facing_);
}

Vec3d RayCaster::directionAt(double x, double y) const {
    return unit(forward_ + (2.0 * x - width_) / height_ * right_ + (1.0 - 2.0 * y / height_) * up_);
}

std::optional<std::size_t> RayCaster::facetAt(double x, double y) const {
    const std::optional<std::size_t> hit = tree_->closestHit({{}, directionAt(x, y)}, kOutside);
    return hit ? std::optional(numbers_[*hit]) : std::nullopt;
}
} // namespace sorvane
