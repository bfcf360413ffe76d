// Form factors between the facets of a body, by ray casting.
#include "formfactors.h"

#include <array>
#include <cmath>
#include <map>
#include <numbers>

#include "bvh.h"
#include "numbertext.h"

namespace sorvane {
namespace {
// The rays of a facet: origins spread evenly over it, directions as the cosine to its normal. The four numbers of each
// ray come from a sequence of low discrepancy, multiples of the powers of the root of x⁵ = x + 1.
class RaysOf {
public:
    RaysOf(const Mesh& mesh, const MeshFacet& facet)
        : origin_(mesh.points[facet.corners[0]]), along_(mesh.points[facet.corners[1]] - origin_),
          across_(mesh.points[facet.corners[2]] - origin_), normal_(unit(cross(along_, across_))),
          tangent_(unit(along_)), bitangent_(cross(normal_, tangent_)) {}

    Ray ray(int number) const {
        constexpr double kRoot = 1.1673039782614187;
        std::array<double, 4> parts{};
        double step = 1.0;
        for (double& part : parts) {
            step /= kRoot;
            const double multiple = 0.5 + (number + 1) * step;
            part = multiple - std::floor(multiple);
        }
        const double fold = std::sqrt(parts[0]);
        const double radius = std::sqrt(parts[2]);
        const double angle = 2.0 * std::numbers::pi * parts[3];
        return {
            origin_ + fold * (1.0 - parts[1]) * along_ + fold * parts[1] * across_,
            radius * std::cos(angle) * tangent_ + radius * std::sin(angle) * bitangent_ +
                std::sqrt(1.0 - parts[2]) * normal_};
    }

private:
    Vec3d origin_;
    Vec3d along_;
    Vec3d across_;
    Vec3d normal_;
    Vec3d tangent_;
    Vec3d bitangent_;
};
} // namespace

std::vector<FormFactors> formFactors(const Mesh& mesh, int rays) {
    const Bvh bvh(mesh);
    std::vector<FormFactors> result(mesh.facets.size());
    for (std::size_t facet = 0; facet < mesh.facets.size(); ++facet) {
        const RaysOf raysOf(mesh, mesh.facets[facet]);
        std::map<std::size_t, int> hits;
        int toEarth = 0;
        int toSky = 0;
        int buried = 0;
        for (int number = 0; number < rays; ++number) {
            const Ray ray = raysOf.ray(number);
            const auto other = bvh.closestHit(ray, facet);
            if (!other)
                ++(ray.direction.z > 0.0 ? toSky : toEarth);
            else if (dot(ray.direction, areaVector(mesh, mesh.facets[*other])) < 0.0)
                ++hits[*other];
            else
                ++buried;
        }
        if (buried == rays)
            continue;
        const double share = 1.0 / (rays - buried);
        result[facet].earth = toEarth * share;
        result[facet].sky = toSky * share;
        for (const auto& [other, count] : hits)
            result[facet].visible.push_back({other, count * share});
    }
    return result;
}

std::string formFactorText(const std::vector<FormFactors>& factors) {
    constexpr int kDecimals = 6;
    std::string text = std::to_string(factors.size()) + '\n';
    for (std::size_t facet = 0; facet < factors.size(); ++facet) {
        text += std::to_string(facet + 1) + ' ';
        appendFixed(text, factors[facet].earth, kDecimals);
        text += ' ';
        appendFixed(text, factors[facet].sky, kDecimals);
        text += ' ' + std::to_string(factors[facet].visible.size()) + '\n';
        for (const FormFactors::Visible& visible : factors[facet].visible) {
            text += std::to_string(visible.facet + 1) + ' ';
            appendFixed(text, visible.factor, kDecimals);
            text += '\n';
        }
    }
    return text;
}
} // namespace sorvane
