// The arrays of a body's facets.
#include "facetarrays.h"

namespace sorvane {
bool FacetArrays::allocate(int facets) {
    *this = FacetArrays();
    if (facets < 0 || facets > kMaximumFacets)
        return false;
    const auto count = static_cast<std::size_t>(facets);
    vertices_ = allocateZeroed<Tuple3<float>>(3 * count);
    normals_ = allocateZeroed<Tuple3<float>>(3 * count);
    primaryColors_ = allocateZeroed<Tuple3<float>>(3 * count);
    secondaryColors_ = allocateZeroed<Tuple3<float>>(3 * count);
    tempArray_ = allocateZeroed<float>(3 * count);
    indices_ = allocateZeroed<Tuple3<unsigned short>>(count);
    facetMap_ = allocateZeroed<int>(count);
    facetCentroids_ = allocateZeroed<Vector<float>>(count);
    facetNormals_ = allocateZeroed<Vector<float>>(count);
    multiFacetRadiances_ = allocateZeroed<float>(count);
    earth_form_factors_ = allocateZeroed<float>(count);
    sky_form_factors_ = allocateZeroed<float>(count);
    return vertices_ && normals_ && primaryColors_ && secondaryColors_ && tempArray_ && indices_ && facetMap_ &&
           facetCentroids_ && facetNormals_ && multiFacetRadiances_ && earth_form_factors_ && sky_form_factors_;
}

void FacetArrays::spread(const float* perFacet, int facets) {
    for (std::size_t k = 0; k < static_cast<std::size_t>(facets); ++k)
        std::fill_n(tempArray_.get() + 3 * static_cast<std::size_t>(facetMap_[k]), 3, perFacet[k]);
}
} // namespace sorvane
