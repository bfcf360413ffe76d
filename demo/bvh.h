// A bounding volume hierarchy over the facets of a mesh, for casting rays.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "mesh.h"

namespace sorvane {
struct Ray {
    Vec3d origin;
    Vec3d direction; // unit
};

// Keeps a reference to the mesh, which must stay as it is.
class Bvh {
public:
    explicit Bvh(const Mesh& mesh);

    // The first facet that the ray hits, from either side, other than `own`, from which it starts.
    std::optional<std::size_t> closestHit(const Ray& ray, std::size_t own) const;

private:
    struct Hit {
        double distance = std::numeric_limits<double>::infinity();
        std::optional<std::size_t> facet;
    };
    // A ray on its way through the nodes.
    struct Search {
        const Ray& ray;
        std::array<double, 3> origin{};
        std::array<double, 3> reciprocal{}; // of the direction's components
        std::size_t own = 0;
        Hit closest{};
    };
    struct Box {
        std::array<double, 3> low = {kInfinity, kInfinity, kInfinity};
        std::array<double, 3> high = {-kInfinity, -kInfinity, -kInfinity};

        static constexpr double kInfinity = std::numeric_limits<double>::infinity();

        void include(const Vec3d& point);
        std::size_t longestAxis() const;
        // Whether the ray enters the box before the closest hit so far.
        bool intersects(const Search& search) const;
    };
    struct Node {
        Box box;
        std::size_t first = 0; // of the facets in order_
        std::size_t last = 0;
        std::size_t right = 0; // the left child, lower along the axis, is the next node; 0 in a leaf
        std::size_t axis = 0;
    };

    void build(std::size_t first, std::size_t last);
    void continueAt(std::size_t number, Search& search) const;
    std::optional<double> distanceTo(std::size_t facet, const Ray& ray) const;

    const Mesh& mesh_;
    std::vector<std::size_t> order_;
    std::vector<Vec3d> centroids_;
    std::vector<Node> nodes_;
};
} // namespace sorvane
