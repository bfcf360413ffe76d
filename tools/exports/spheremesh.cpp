// A ball of facets.
#include "spheremesh.h"

#include "triples.h"

namespace sorvane {
namespace {
constexpr int kDivisions = 2; // of an octahedron's facets, each into four

Triple middle(const Triple& a, const Triple& b) {
    const Triple sum = {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
    return scaled(sum, 1.0 / length(sum));
}

void addFacet(std::vector<float>& mesh, const Triple& a, const Triple& b, const Triple& c, int divisions) {
    if (divisions == 0) {
        for (const Triple& corner : {a, b, c})
            for (const double coordinate : corner)
                mesh.push_back(static_cast<float>(coordinate));
        return;
    }
    const Triple ab = middle(a, b);
    const Triple bc = middle(b, c);
    const Triple ca = middle(c, a);
    addFacet(mesh, a, ab, ca, divisions - 1);
    addFacet(mesh, ab, b, bc, divisions - 1);
    addFacet(mesh, ca, bc, c, divisions - 1);
    addFacet(mesh, ab, bc, ca, divisions - 1);
}
} // namespace

std::vector<float> unitSphereMesh() {
    std::vector<float> mesh;
    for (const double x : {1.0, -1.0})
        for (const double y : {1.0, -1.0})
            for (const double z : {1.0, -1.0}) {
                const bool isMirrored = x * y * z < 0.0;
                const Triple alongX = {x, 0.0, 0.0};
                const Triple alongY = {0.0, y, 0.0};
                addFacet(mesh, isMirrored ? alongY : alongX, isMirrored ? alongX : alongY, {0.0, 0.0, z}, kDivisions);
            }
    return mesh;
}
} // namespace sorvane
