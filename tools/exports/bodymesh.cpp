// The facets of a body with their radiances, without a context to draw them in.
#include "bodymesh.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "brdffile.h"
#include "facetarrays.h"
#include "loaderguard.h"
#include "radfile.h"
#include "vnlfile.h"

namespace sorvane {
namespace {
bool loadFacets(const BodyFiles& files, BrdfFile& brdf, FacetArrays& arrays) {
    if (!brdf.Load(files.reflectance) || !arrays.allocate(brdf.numFacets()))
        return false;
    RadFile rad;
    VnlFile vnl;
    return rad.Load(files.radiance, brdf.numFacets()) &&
           vnl.Load(
               files.geometry, brdf, rad, arrays.indices_.get(), arrays.vertices_.get(), arrays.normals_.get(),
               arrays.primaryColors_.get(), arrays.secondaryColors_.get(), arrays.facetCentroids_.get(),
               arrays.facetNormals_.get(), arrays.facetMap_.get());
}

bool isFinite(const Tuple3<float>& point) {
    return std::isfinite(point.x) && std::isfinite(point.y) && std::isfinite(point.z);
}

// As the viewer's shader takes it: infinite is as bright as can be.
float finiteRadiance(float radiance) {
    constexpr float kLargest = 1e30F;
    return std::isnan(radiance) ? 0.0F : std::clamp(radiance, -kLargest, kLargest);
}
} // namespace

Outcome<BodyMesh> loadBodyMesh(const BodyFiles& files) {
    BrdfFile brdf;
    FacetArrays arrays;
    bool isLoaded = false;
    const LoaderOutcome outcome = runLoader([&] { isLoaded = loadFacets(files, brdf, arrays); });
    if (!isLoaded)
        return Problem(outcome.messages.empty() ? "its files can't be loaded." : outcome.messages.back().text);
    BodyMesh mesh;
    for (std::size_t facet = 0; facet < static_cast<std::size_t>(brdf.numFacets()); ++facet) {
        const std::span corners(arrays.vertices_.get() + 3 * facet, 3);
        if (!std::ranges::all_of(corners, isFinite))
            continue;
        for (const Tuple3<float>& corner : corners)
            mesh.positions.insert(mesh.positions.end(), {corner.x, corner.y, corner.z});
        mesh.radiances.insert(mesh.radiances.end(), 3, finiteRadiance(arrays.primaryColors_[3 * facet].x));
    }
    return mesh;
}
} // namespace sorvane
