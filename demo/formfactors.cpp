// Form factors between the facets of a body, by ray casting.
#include "formfactors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <numbers>
#include <numeric>
#include <optional>
#include <span>

#include "numbertext.h"

namespace {
struct Ray {
    Triple origin;
    Triple direction; // unit
};

struct Box {
    std::array<double, 3> low = {kInfinity, kInfinity, kInfinity};
    std::array<double, 3> high = {-kInfinity, -kInfinity, -kInfinity};

    static constexpr double kInfinity = std::numeric_limits<double>::infinity();

    void include(const Triple& point) {
        const std::array<double, 3> values = {point.x, point.y, point.z};
        for (std::size_t i = 0; i < 3; ++i) {
            low[i] = std::min(low[i], values[i]);
            high[i] = std::max(high[i], values[i]);
        }
    }
    std::size_t longestAxis() const {
        std::size_t longest = 0;
        for (std::size_t i = 1; i < 3; ++i)
            if (high[i] - low[i] > high[longest] - low[longest])
                longest = i;
        return longest;
    }
    // Whether the ray meets the box before `limit`.
    bool isMet(const Ray& ray, double limit) const {
        const std::array<double, 3> origin = {ray.origin.x, ray.origin.y, ray.origin.z};
        const std::array<double, 3> direction = {ray.direction.x, ray.direction.y, ray.direction.z};
        double enter = 0.0;
        double leave = limit;
        for (std::size_t i = 0; i < 3; ++i) {
            const double a = (low[i] - origin[i]) / direction[i];
            const double b = (high[i] - origin[i]) / direction[i];
            // In this order a comparison with 0 / 0 changes nothing.
            enter = std::max(enter, std::min(a, b));
            leave = std::min(leave, std::max(a, b));
        }
        return enter <= leave;
    }
};

// The facets of a mesh in a tree of boxes.
class FacetTree {
public:
    explicit FacetTree(const Mesh& mesh) : mesh_(mesh), order_(mesh.facets.size()) {
        std::iota(order_.begin(), order_.end(), 0);
        for (const MeshFacet& facet : mesh.facets)
            centroids_.push_back(centroid(mesh, facet));
        if (!order_.empty())
            build(0, order_.size());
    }

    // The facet other than `own` that the ray meets first.
    std::optional<std::size_t> firstMet(const Ray& ray, std::size_t own) const {
        Meeting nearest;
        if (!nodes_.empty())
            search(0, ray, own, nearest);
        return nearest.facet;
    }

private:
    struct Node {
        Box box;
        std::size_t first = 0;
        std::size_t last = 0;
        std::size_t right = 0; // the left child is the next node; 0 in a leaf
    };
    struct Meeting {
        double distance = std::numeric_limits<double>::infinity();
        std::optional<std::size_t> facet;
    };

    void build(std::size_t first, std::size_t last) {
        constexpr std::size_t kLeaf = 4;
        const std::size_t number = nodes_.size();
        Node node{{}, first, last, 0};
        for (std::size_t i = first; i < last; ++i)
            for (const std::size_t corner : mesh_.facets[order_[i]].corners)
                node.box.include(mesh_.points[corner]);
        nodes_.push_back(node);
        if (last - first <= kLeaf)
            return;
        constexpr std::array<double Triple::*, 3> kAxes = {&Triple::x, &Triple::y, &Triple::z};
        double Triple::*const axis = kAxes.at(node.box.longestAxis());
        const std::size_t middle = first + (last - first) / 2;
        const auto facets = std::span(order_).subspan(first, last - first);
        std::nth_element(
            facets.begin(), facets.begin() + static_cast<std::ptrdiff_t>(middle - first), facets.end(),
            [&](std::size_t a, std::size_t b) { return centroids_[a].*axis < centroids_[b].*axis; });
        build(first, middle);
        nodes_[number].right = nodes_.size();
        build(middle, last);
    }

    void search(std::size_t number, const Ray& ray, std::size_t own, Meeting& nearest) const {
        const Node& node = nodes_[number];
        if (!node.box.isMet(ray, nearest.distance))
            return;
        if (node.right != 0) {
            search(number + 1, ray, own, nearest);
            search(node.right, ray, own, nearest);
            return;
        }
        for (std::size_t i = node.first; i < node.last; ++i)
            if (order_[i] != own)
                if (const auto distance = distanceTo(order_[i], ray); distance && *distance < nearest.distance)
                    nearest = {*distance, order_[i]};
    }

    // As Möller and Trumbore work it out.
    std::optional<double> distanceTo(std::size_t facet, const Ray& ray) const {
        constexpr double kNearest = 1e-9;
        const auto& corners = mesh_.facets[facet].corners;
        const Triple& a = mesh_.points[corners[0]];
        const Triple along = mesh_.points[corners[1]] - a;
        const Triple across = mesh_.points[corners[2]] - a;
        const Triple p = cross(ray.direction, across);
        const double determinant = dot(along, p);
        if (determinant == 0.0)
            return std::nullopt;
        const Triple toOrigin = ray.origin - a;
        const double u = dot(toOrigin, p) / determinant;
        const Triple q = cross(toOrigin, along);
        const double v = dot(ray.direction, q) / determinant;
        const double distance = dot(across, q) / determinant;
        if (u < 0.0 || v < 0.0 || u + v > 1.0 || distance < kNearest)
            return std::nullopt;
        return distance;
    }

    const Mesh& mesh_;
    std::vector<std::size_t> order_;
    std::vector<Triple> centroids_;
    std::vector<Node> nodes_;
};

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
    Triple origin_;
    Triple along_;
    Triple across_;
    Triple normal_;
    Triple tangent_;
    Triple bitangent_;
};
} // namespace

std::vector<FormFactors> formFactors(const Mesh& mesh, int rays) {
    const FacetTree tree(mesh);
    std::vector<FormFactors> result(mesh.facets.size());
    for (std::size_t facet = 0; facet < mesh.facets.size(); ++facet) {
        const RaysOf raysOf(mesh, mesh.facets[facet]);
        std::map<std::size_t, int> met;
        int toEarth = 0;
        int toSky = 0;
        int buried = 0;
        for (int number = 0; number < rays; ++number) {
            const Ray ray = raysOf.ray(number);
            const auto other = tree.firstMet(ray, facet);
            if (!other)
                ++(ray.direction.z > 0.0 ? toSky : toEarth);
            else if (dot(ray.direction, areaVector(mesh, mesh.facets[*other])) < 0.0)
                ++met[*other];
            else
                ++buried;
        }
        if (buried == rays)
            continue;
        const double share = 1.0 / (rays - buried);
        result[facet].earth = toEarth * share;
        result[facet].sky = toSky * share;
        for (const auto& [other, count] : met)
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
