// A bounding volume hierarchy over the facets of a mesh, for casting rays.
#include "bvh.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace sorvane {
void Bvh::Box::include(const Vec3d& point) {
    const std::array<double, 3> values = {point.x, point.y, point.z};
    for (std::size_t i = 0; i < 3; ++i) {
        low[i] = std::min(low[i], values[i]);
        high[i] = std::max(high[i], values[i]);
    }
}

std::size_t Bvh::Box::longestAxis() const {
    std::size_t longest = 0;
    for (std::size_t i = 1; i < 3; ++i)
        if (high[i] - low[i] > high[longest] - low[longest])
            longest = i;
    return longest;
}

bool Bvh::Box::intersects(const Search& search) const {
    double enter = 0.0;
    double leave = search.closest.distance;
    for (std::size_t i = 0; i < 3; ++i) {
        const double a = (low[i] - search.origin[i]) * search.reciprocal[i];
        const double b = (high[i] - search.origin[i]) * search.reciprocal[i];
        // In this order a comparison with 0 · ∞ changes nothing.
        enter = std::max(enter, std::min(a, b));
        leave = std::min(leave, std::max(a, b));
    }
    return enter <= leave;
}

Bvh::Bvh(const Mesh& mesh) : mesh_(mesh), order_(mesh.facets.size()) {
    std::iota(order_.begin(), order_.end(), 0);
    for (const MeshFacet& facet : mesh.facets)
        centroids_.push_back(centroid(mesh, facet));
    if (!order_.empty())
        build(0, order_.size());
}

std::optional<std::size_t> Bvh::closestHit(const Ray& ray, std::size_t own) const {
    Search search{
        .ray = ray,
        .origin = {ray.origin.x, ray.origin.y, ray.origin.z},
        .reciprocal = {1.0 / ray.direction.x, 1.0 / ray.direction.y, 1.0 / ray.direction.z},
        .own = own};
    if (!nodes_.empty())
        continueAt(0, search);
    return search.closest.facet;
}

// Adds the node over a range of order_, and those below it.
void Bvh::build(std::size_t first, std::size_t last) {
    constexpr std::size_t kLeaf = 4;
    const std::size_t number = nodes_.size();
    Node node{{}, first, last, 0, 0};
    for (std::size_t i = first; i < last; ++i)
        for (const std::size_t corner : mesh_.facets[order_[i]].corners)
            node.box.include(mesh_.points[corner]);
    node.axis = node.box.longestAxis();
    nodes_.push_back(node);
    if (last - first <= kLeaf)
        return;
    constexpr std::array<double Vec3d::*, 3> kAxes = {&Vec3d::x, &Vec3d::y, &Vec3d::z};
    double Vec3d::*const axis = kAxes.at(node.axis);
    const std::size_t middle = first + (last - first) / 2;
    const auto facets = std::span(order_).subspan(first, last - first);
    std::nth_element(
        facets.begin(), facets.begin() + static_cast<std::ptrdiff_t>(middle - first), facets.end(),
        [&](std::size_t a, std::size_t b) { return centroids_[a].*axis < centroids_[b].*axis; });
    build(first, middle);
    nodes_[number].right = nodes_.size();
    build(middle, last);
}

// The nearer child first: what the ray hits there often spares the other one.
void Bvh::continueAt(std::size_t number, Search& search) const {
    const Node& node = nodes_[number];
    if (!node.box.intersects(search))
        return;
    if (node.right != 0) {
        const bool goesUpwards = search.reciprocal[node.axis] > 0.0;
        continueAt(goesUpwards ? number + 1 : node.right, search);
        continueAt(goesUpwards ? node.right : number + 1, search);
        return;
    }
    for (std::size_t i = node.first; i < node.last; ++i)
        if (order_[i] != search.own)
            if (const auto distance = distanceTo(order_[i], search.ray);
                distance && *distance < search.closest.distance)
                search.closest = {*distance, order_[i]};
}

// As Möller and Trumbore work it out.
std::optional<double> Bvh::distanceTo(std::size_t facet, const Ray& ray) const {
    constexpr double kNearest = 1e-9;
    const auto& corners = mesh_.facets[facet].corners;
    const Vec3d& a = mesh_.points[corners[0]];
    const Vec3d along = mesh_.points[corners[1]] - a;
    const Vec3d across = mesh_.points[corners[2]] - a;
    const Vec3d p = cross(ray.direction, across);
    const double determinant = dot(along, p);
    if (determinant == 0.0)
        return std::nullopt;
    const Vec3d toOrigin = ray.origin - a;
    const double u = dot(toOrigin, p) / determinant;
    const Vec3d q = cross(toOrigin, along);
    const double v = dot(ray.direction, q) / determinant;
    const double distance = dot(across, q) / determinant;
    if (u < 0.0 || v < 0.0 || u + v > 1.0 || distance < kNearest)
        return std::nullopt;
    return distance;
}
} // namespace sorvane
