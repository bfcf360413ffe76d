// The arrays of a body's facets.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <type_traits>

#include "tuple3.h"
#include "vector.h"

namespace sorvane {
struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};

// An array of zeroes. Memory is taken when it is written to: counts that a file announces cost nothing by themselves.
template <class T> using ZeroedArray = std::unique_ptr<T[], FreeMemory>;

template <class T> ZeroedArray<T> allocateZeroed(std::size_t count) {
    static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);
    return ZeroedArray<T>(static_cast<T*>(std::calloc(std::max<std::size_t>(count, 1), sizeof(T))));
}

inline constexpr int kMaximumFacets = 1 << 26; // 14 GiB of arrays; a larger number is a fault in a file

struct FacetArrays {
    // Per corner, in the order of reflectance classes.
    ZeroedArray<Tuple3<float>> vertices_;
    ZeroedArray<Tuple3<float>> normals_;
    ZeroedArray<Tuple3<float>> primaryColors_;   // radiance, W/cm²/sr
    ZeroedArray<Tuple3<float>> secondaryColors_; // emittance, W/cm²/sr
    ZeroedArray<float> tempArray_;               // a value for each corner on its way to the graphics card
    // Per facet, in the order of reflectance classes: its three corners.
    ZeroedArray<Tuple3<unsigned short>> indices_;
    // Per facet, in file order.
    ZeroedArray<int> facetMap_; // the facet's place in the order of classes
    ZeroedArray<Vector<float>> facetCentroids_;
    ZeroedArray<Vector<float>> facetNormals_;
    ZeroedArray<float> multiFacetRadiances_; // W/cm²/sr
    ZeroedArray<float> earth_form_factors_;
    ZeroedArray<float> sky_form_factors_;

    // Replaces all arrays. False when one of them can't be had; it is null then.
    bool allocate(int facets);

    // Fills tempArray_: the corners of facet k get perFacet[k].
    void spread(const float* perFacet, int facets);
};
} // namespace sorvane
