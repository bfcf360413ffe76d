// The vertex buffers of a body.
#pragma once

#include <array>

#include "facetarrays.h"

namespace sorvane {
// Seven buffers of corners and one of indices. The GL names are plain integers here, so that this header can stand
// beside any OpenGL header. Everything but construction needs the GL context current in which create ran, the
// destructor of created buffers too.
class FacetBuffers {
public:
    // Where the shader takes the three values per corner that OpenGL has no name for; -1 for nowhere.
    struct Attributes {
        int multiFacetRadiance = -1;
        int earthFormFactor = -1;
        int skyFormFactor = -1;
    };

    FacetBuffers() = default;
    ~FacetBuffers();
    FacetBuffers(const FacetBuffers&) = delete;
    FacetBuffers& operator=(const FacetBuffers&) = delete;

    // Fills the buffers. Uses the arrays' tempArray_. False when the driver has no vertex buffers.
    bool create(FacetArrays& arrays, int facets, bool hasMovingVertices);
    void destroy();

    void uploadVertices(const Tuple3<float>* vertices) const;
    // One value per corner.
    void uploadMultiFacetRadiances(const float* radiances) const;

    // Points OpenGL's arrays at the buffers. The caller saves and restores the client's vertex-array state.
    void bind(const Attributes& attributes) const;

    // Draws facets that lie together, in the order of classes.
    void draw(int firstFacet, int facetCount) const;

    // Whether drawing goes by index: 16 bits number the corners of this many facets, a larger body is drawn as the
    // plain sequence of corners that its indices stand for.
    bool isIndexed() const { return facets_ <= kMaximumIndexedFacets; }
    static constexpr int kMaximumIndexedFacets = 21845;

private:
    enum Buffer {
        Positions,
        Normals,
        PrimaryColours,
        SecondaryColours,
        Indices,
        MultiFacetRadiance,
        EarthFormFactor,
        SkyFormFactor,
        kBuffers
    };

    std::array<unsigned int, kBuffers> names_{};
    int facets_ = 0;
    bool isCreated_ = false;
};
} // namespace sorvane
