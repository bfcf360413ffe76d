// The vertex buffers of a body.
#include "facetbuffers.h"

#include <cstdint>

#include <GL/glew.h>

namespace sorvane {
namespace {
// glBufferData for `count` values.
template <class T> void fill(GLenum target, GLuint name, const T* values, std::size_t count, GLenum usage) {
    glBindBuffer(target, name);
    glBufferData(target, static_cast<GLsizeiptr>(count * sizeof(T)), values, usage);
    glBindBuffer(target, 0);
}

void pointAttribute(int location, GLuint buffer) {
    if (location < 0)
        return;
    const auto index = static_cast<GLuint>(location);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glEnableVertexAttribArray(index);
    glVertexAttribPointer(index, 1, GL_FLOAT, GL_FALSE, 0, nullptr);
}
} // namespace

FacetBuffers::~FacetBuffers() {
    destroy();
}

void FacetBuffers::destroy() {
    if (isCreated_)
        glDeleteBuffers(kBuffers, names_.data());
    isCreated_ = false;
}

bool FacetBuffers::create(FacetArrays& arrays, int facets, bool hasMovingVertices) {
    destroy();
    if (glGenBuffers == nullptr)
        return false;
    glGenBuffers(kBuffers, names_.data());
    isCreated_ = true;
    facets_ = facets;
    const auto count = static_cast<std::size_t>(facets);
    const std::size_t corners = 3 * count;
    fill(
        GL_ARRAY_BUFFER, names_[Positions], arrays.vertices_.get(), corners,
        hasMovingVertices ? GL_DYNAMIC_DRAW : GL_STATIC_DRAW);
    fill(GL_ARRAY_BUFFER, names_[Normals], arrays.normals_.get(), corners, GL_STATIC_DRAW);
    fill(GL_ARRAY_BUFFER, names_[PrimaryColours], arrays.primaryColors_.get(), corners, GL_STATIC_DRAW);
    fill(GL_ARRAY_BUFFER, names_[SecondaryColours], arrays.secondaryColors_.get(), corners, GL_STATIC_DRAW);
    if (isIndexed())
        fill(GL_ELEMENT_ARRAY_BUFFER, names_[Indices], arrays.indices_.get(), count, GL_STATIC_DRAW);
    arrays.spread(arrays.earth_form_factors_.get(), facets);
    fill(GL_ARRAY_BUFFER, names_[EarthFormFactor], arrays.tempArray_.get(), corners, GL_STATIC_DRAW);
    arrays.spread(arrays.sky_form_factors_.get(), facets);
    fill(GL_ARRAY_BUFFER, names_[SkyFormFactor], arrays.tempArray_.get(), corners, GL_STATIC_DRAW);
    arrays.spread(arrays.multiFacetRadiances_.get(), facets);
    uploadMultiFacetRadiances(arrays.tempArray_.get());
    return true;
}

void FacetBuffers::uploadVertices(const Tuple3<float>* vertices) const {
    fill(GL_ARRAY_BUFFER, names_[Positions], vertices, 3 * static_cast<std::size_t>(facets_), GL_DYNAMIC_DRAW);
}

void FacetBuffers::uploadMultiFacetRadiances(const float* radiances) const {
    fill(
        GL_ARRAY_BUFFER, names_[MultiFacetRadiance], radiances, 3 * static_cast<std::size_t>(facets_), GL_DYNAMIC_DRAW);
}

void FacetBuffers::bind(const Attributes& attributes) const {
    glBindBuffer(GL_ARRAY_BUFFER, names_[Positions]);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(3, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, names_[Normals]);
    glEnableClientState(GL_NORMAL_ARRAY);
    glNormalPointer(GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, names_[PrimaryColours]);
    glEnableClientState(GL_COLOR_ARRAY);
    glColorPointer(3, GL_FLOAT, 0, nullptr);
    glBindBuffer(GL_ARRAY_BUFFER, names_[SecondaryColours]);
    glEnableClientState(GL_SECONDARY_COLOR_ARRAY);
    glSecondaryColorPointer(3, GL_FLOAT, 0, nullptr);
    if (isIndexed())
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, names_[Indices]);
    pointAttribute(attributes.multiFacetRadiance, names_[MultiFacetRadiance]);
    pointAttribute(attributes.earthFormFactor, names_[EarthFormFactor]);
    pointAttribute(attributes.skyFormFactor, names_[SkyFormFactor]);
}

void FacetBuffers::draw(int firstFacet, int facetCount) const {
    if (isIndexed()) {
        // OpenGL takes an offset into the bound buffer as a pointer.
        const auto offset = 3 * sizeof(GLushort) * static_cast<std::uintptr_t>(firstFacet);
        // NOLINTNEXTLINE(performance-no-int-to-ptr)
        glDrawElements(GL_TRIANGLES, 3 * facetCount, GL_UNSIGNED_SHORT, reinterpret_cast<const void*>(offset));
    } else {
        glDrawArrays(GL_TRIANGLES, 3 * firstFacet, 3 * facetCount);
    }
}
} // namespace sorvane
