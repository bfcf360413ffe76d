// Form factors between the facets of a body, by ray casting.
#include "formfactors.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <future>
#include <map>
#include <numbers>
#include <thread>

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
// What the rays of a facet met.
struct Hits {
    int earth = 0;
    int sky = 0;
    int buried = 0;
    std::map<std::size_t, int> facets;
};

Hits hitsOf(const Mesh& mesh, const Bvh& bvh, std::size_t facet, int rays) {
    const RaysOf raysOf(mesh, mesh.facets[facet]);
    Hits hits;
    for (int number = 0; number < rays; ++number) {
        const Ray ray = raysOf.ray(number);
        const auto other = bvh.closestHit(ray, facet);
        if (!other)
            ++(ray.direction.z > 0.0 ? hits.sky : hits.earth);
        else if (dot(ray.direction, areaVector(mesh, mesh.facets[*other])) < 0.0)
            ++hits.facets[*other];
        else
            ++hits.buried;
    }
    return hits;
}

// On all processors; a facet's don't depend on which one works them out.
std::vector<Hits> hitsOfAll(const Mesh& mesh, int rays) {
    const Bvh bvh(mesh);
    std::vector<Hits> hits(mesh.facets.size());
    std::atomic<std::size_t> next = 0;
    std::vector<std::future<void>> workers;
    for (unsigned int worker = 0; worker < std::max(1U, std::thread::hardware_concurrency()); ++worker)
        workers.push_back(std::async(std::launch::async, [&] {
            for (std::size_t facet = next++; facet < hits.size(); facet = next++)
                hits[facet] = hitsOf(mesh, bvh, facet, rays);
        }));
    for (std::future<void>& worker : workers)
        worker.get();
    return hits;
}

// Scales the factors of a facet so that they add up to 1, unless it sees nothing but what is all buried.
void normalise(FormFactors& factors) {
    double sum = factors.earth + factors.sky;
    for (const FormFactors::Visible& visible : factors.visible)
        sum += visible.factor;
    if (!(sum > 0.0))
        return;
    factors.earth /= sum;
    factors.sky /= sum;
    for (FormFactors::Visible& visible : factors.visible)
        visible.factor /= sum;
}
} // namespace

// What two facets exchange, A_k F_kj = A_j F_jk, is worked out from the rays of both: n hits in all mean
// n / (N / A_k + N / A_j), N the rays of a facet and A its whole area, over which they leave.
std::vector<FormFactors> formFactors(const Mesh& mesh, int rays) {
    const std::vector<Hits> hits = hitsOfAll(mesh, rays);
    std::vector<std::map<std::size_t, int>> exchanged(hits.size());
    std::vector<double> areas;
    for (std::size_t facet = 0; facet < hits.size(); ++facet) {
        areas.push_back(length(areaVector(mesh, mesh.facets[facet])));
        for (const auto& [other, count] : hits[facet].facets) {
            exchanged[facet][other] += count;
            exchanged[other][facet] += count;
        }
    }

    std::vector<FormFactors> result(hits.size());
    for (std::size_t facet = 0; facet < hits.size(); ++facet) {
        FormFactors& factors = result[facet];
        const int shown = rays - hits[facet].buried;
        if (shown == 0)
            continue;
        factors.shown = static_cast<double>(shown) / rays;
        factors.earth = static_cast<double>(hits[facet].earth) / shown;
        factors.sky = static_cast<double>(hits[facet].sky) / shown;
        for (const auto& [other, count] : exchanged[facet])
            if (hits[other].buried < rays)
                factors.visible.push_back({other, count * areas[other] / (areas[facet] + areas[other]) / shown});
        normalise(factors);
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
