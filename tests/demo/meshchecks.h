// What every surface of a body must keep to.
#pragma once

#include <map>
#include <utility>

#include "mesh.h"

namespace sorvane {
// Whether each edge belongs to two facets that run along it in opposite directions.
inline bool isClosed(const sorvane::Mesh& mesh) {
    std::map<std::pair<std::size_t, std::size_t>, int> directions;
    for (const sorvane::MeshFacet& facet : mesh.facets)
        for (std::size_t i = 0; i < 3; ++i) {
            const std::size_t from = facet.corners[i];
            const std::size_t to = facet.corners[(i + 1) % 3];
            if (++directions[{from, to}] > 1)
                return false;
        }
    for (const auto& [edge, count] : directions)
        if (!directions.contains({edge.second, edge.first}))
            return false;
    return true;
}
} // namespace sorvane
