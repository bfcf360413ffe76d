// A faceted body shaded from infrared signature data: target or threat.
#include "hardbody.h"

#include <algorithm>
#include <filesystem>
#include <new>

#include <GL/glew.h>

#include "dynamicdata.h"
#include "fail.h"
#include "vnlfile.h"

using namespace sorvane;

bool Hardbody::Init(
    const std::string& brdfPath, const std::string& vnlPath, const std::string& radPath, const std::string& shaderDir,
    const std::string& rotorPath, bool doBrdf, bool antialias, bool multiFacet, bool rotors, bool perFrameUpload,
    float p0, float p1, float p2, float p3, float p4, float p5, float range, const float& earthRadiance,
    const float& skyRadiance, const float& solarBeam) {
    isUsable_ = false;
    multiFacetEye_.reset();
    flags_ = {doBrdf, antialias, multiFacet, rotors, perFrameUpload};
    parameters_ = {p0, p1, p2, p3, p4, p5};
    range_ = range;

    rotor_.reset();
    if (flags_.rotors && !rotorPath.empty())
        rotor_ = std::make_unique<Rotor>(rotorPath.c_str());
    try {
        if (!loadFiles(brdfPath, vnlPath, radPath) || !loadSubfacets(vnlPath))
            return false;
        if (rotor_ != nullptr)
            turnedVertices_.assign(arrays_.vertices_.get(), arrays_.vertices_.get() + vertexCount_);
    } catch (const std::bad_alloc&) {
        return fail("Init", "Out of memory.");
    }

    shader_.reset();
    if (!flags_.perFrameUpload) {
        shader_ = std::make_unique<BodyShader>();
        if (!shader_->Init(shaderDir, earthRadiance, skyRadiance, solarBeam, range_))
            return false;
    }
    if (!buffers_.create(arrays_, facets_, flags_.perFrameUpload))
        return fail("Init", "Vertex buffer creation failed.");
    isUsable_ = true;
    return true;
}

bool Hardbody::loadFiles(const std::string& brdfPath, const std::string& vnlPath, const std::string& radPath) {
    if (!brdf_.Load(brdfPath))
        return false;
    facets_ = brdf_.numFacets();
    vertexCount_ = brdf_.numVertices();
    brdfClasses_ = brdf_.numBrdfClasses();
    if (!AllocateBuffers() || !rad_.Load(radPath, facets_))
        return false;
    VnlFile vnl;
    if (!vnl.Load(
            vnlPath, brdf_, rad_, arrays_.indices_.get(), arrays_.vertices_.get(), arrays_.normals_.get(),
            arrays_.primaryColors_.get(), arrays_.secondaryColors_.get(), arrays_.facetCentroids_.get(),
            arrays_.facetNormals_.get(), arrays_.facetMap_.get()))
        return false;
    box_ = vnl.boundingBox();
    return true;
}

bool Hardbody::AllocateBuffers() {
    if (arrays_.allocate(facets_))
        return true;
    const auto address = [](const auto& array) {
        return static_cast<const void*>(array.get());
    };
    return fail(
        "AllocateBuffers",
        "Unable to allocate all the necessary arrays. Array address follow: vertices_ (%p), normals_ (%p), "
        "primaryColors_ (%p), secondaryColors_ (%p), indices_ (%p), facetMap_ (%p), facetCentroids_ (%p), "
        "facetNormals_ (%p), multiFacetRadiances_ (%p), tempArray_ (%p), earth_form_factors_ (%p), sky_form_factors_ "
        "(%p).",
        address(arrays_.vertices_), address(arrays_.normals_), address(arrays_.primaryColors_),
        address(arrays_.secondaryColors_), address(arrays_.indices_), address(arrays_.facetMap_),
        address(arrays_.facetCentroids_), address(arrays_.facetNormals_), address(arrays_.multiFacetRadiances_),
        address(arrays_.tempArray_), address(arrays_.earth_form_factors_), address(arrays_.sky_form_factors_));
}

// A body without form factors is usual and no fault; form factors of another body are one as soon as they are used.
bool Hardbody::loadSubfacets(const std::string& vnlPath) {
    const auto count = static_cast<std::size_t>(facets_);
    const std::span earth(arrays_.earth_form_factors_.get(), count);
    const std::span sky(arrays_.sky_form_factors_.get(), count);
    const bool isLoaded = subfacets_.Load(SubfacetFile::pathBeside(vnlPath), earth, sky);
    hasFormFactorFault_ = !isLoaded && std::filesystem::exists(SubfacetFile::pathBeside(vnlPath));
    if (!isLoaded)
        flags_.multiFacet = false;
    if (flags_.multiFacet) {
        const std::span normals(arrays_.facetNormals_.get(), count);
        if (!subfacets_.Init(normals))
            return fail("Init", "Subfacet object initialization failed.");
        multiFacet_.init(
            subfacets_, brdf_, normals, std::span(arrays_.facetCentroids_.get(), count), std::span(rad_.rad(), count));
    }
    if (!isLoaded || subfacets_.facetCount() != count) {
        std::fill(earth.begin(), earth.end(), 1.0F);
        std::fill(sky.begin(), sky.end(), 1.0F);
    }
    return true;
}

void Hardbody::SetWorldPos(float x, float y, float z) {
    position_ = {x, y, z};
    ComputeTransforms();
}

void Hardbody::SetOrientation(float a, float b, float c) {
    orientation_ = {a, b, c};
    ComputeTransforms();
}

void Hardbody::SetWorldPosAndOrientation(float x, float y, float z, float a, float b, float c) {
    position_ = {x, y, z};
    orientation_ = {a, b, c};
    ComputeTransforms();
}

void Hardbody::ComputeTransforms() {
    modelMatrix_ = BuildTransform(
        1.0F, 1.0F, 1.0F, orientation_[0], orientation_[1], orientation_[2], position_[0], position_[1], position_[2]);
}

void Hardbody::UpdateMultiFacet(const Vector<float>& eye) {
    if (!isUsable_ || !flags_.multiFacet)
        return;
    // The model matrix turns and moves; its inverse moves back and turns by the transpose.
    Vector<float> modelEye(0.0F, 0.0F, 0.0F, 1.0F);
    for (int axis = 0; axis < 3; ++axis)
        for (int row = 0; row < 3; ++row)
            modelEye.ElementAt(axis) += modelMatrix_(row, axis) * (eye.ElementAt(row) - modelMatrix_(row, 3));
    if (modelEye == multiFacetEye_)
        return;
    multiFacetEye_ = modelEye;
    multiFacet_.update(modelEye, std::span(arrays_.multiFacetRadiances_.get(), static_cast<std::size_t>(facets_)));
    arrays_.spread(arrays_.multiFacetRadiances_.get(), facets_);
}

// Always from the vertices as loaded, so that nothing adds up over the frames.
void Hardbody::turnRotors(float time) {
    for (int number = 1; number <= rotor_->getRotorCount(); ++number) {
        std::array<float, 16> matrix{};
        rotor_->getRotorMatrix(number, time, matrix.data());
        const int last = std::min(rotor_->getRotorEnd(number), facets_);
        for (int facet = rotor_->getRotorStart(number); facet <= last; ++facet) {
            const auto corner = 3 * static_cast<std::size_t>(arrays_.facetMap_[static_cast<std::size_t>(facet - 1)]);
            for (std::size_t i = corner; i < corner + 3; ++i) {
                const Tuple3<float>& vertex = arrays_.vertices_[i];
                const std::array<float, 3> point = {vertex.x, vertex.y, vertex.z};
                std::array<float, 3> turned{};
                mat_vtransform_(matrix.data(), point.data(), turned.data());
                turnedVertices_[i] = {turned[0], turned[1], turned[2]};
            }
        }
    }
}

void Hardbody::Render(Dynamic_Data* data) {
    if (!isUsable_ || data == nullptr)
        return;
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    Matrix<float> fromOrigin = modelMatrix_;
    for (int axis = 0; axis < 3; ++axis)
        fromOrigin(axis, 3) -= data->origin[static_cast<std::size_t>(axis)];
    glMultMatrixf(fromOrigin.data());

    if (flags_.perFrameUpload) {
        if (rotor_ != nullptr)
            turnRotors(data->time);
        buffers_.uploadVertices(rotor_ != nullptr ? turnedVertices_.data() : arrays_.vertices_.get());
    }
    buffers_.uploadMultiFacetRadiances(arrays_.tempArray_.get());
    buffers_.bind(shader_ != nullptr ? shader_->attributes() : FacetBuffers::Attributes());
    if (shader_ != nullptr) {
        shader_->Activate();
        shader_->setSolarDirection(data->solarDirEyeCoords);
    }
    drawBlocks(shader_.get());
    if (shader_ != nullptr)
        BodyShader::Deactivate();

    glPopMatrix();
    glPopClientAttrib();
}

void Hardbody::drawBlocks(const BodyShader* shader) const {
    for (std::size_t i = 0; i < static_cast<std::size_t>(brdfClasses_); ++i) {
        const FacetBlock& block = brdf_.blocks()[i];
        if (block.facetCount_ == 0)
            continue;
        if (shader != nullptr)
            shader->setClass(brdf_.classes()[i]);
        buffers_.draw(block.startIndex_, block.facetCount_);
    }
}

BoxCorners Hardbody::emptyBox() {
    BoxCorners corners;
    corners.fill({0.0F, 0.0F, 0.0F, 1.0F});
    return corners;
}

BoxCorners Hardbody::GetTransformedBBox() const {
    BoxCorners corners = BBox();
    if (isUsable_)
        for (Vector<float>& corner : corners)
            corner = modelMatrix_ * corner;
    return corners;
}

Vector<float> Hardbody::Centroid(const Matrix<float>& view) const {
    const BoxCorners corners = BBox();
    const Vector<float> middle = (corners[0] + corners[6]) / 2.0F; // two opposite corners
    return view * (modelMatrix_ * middle);
}

bool Hardbody::NearPlaneProjection(Rect<float>& rect, const Matrix<float>& view, const float& near) const {
    if (!isUsable_)
        return false;
    BoxCorners corners = GetTransformedBBox();
    for (Vector<float>& corner : corners)
        corner = view * corner;

    Rect<float> covered;
    bool isSeen = false;
    const auto include = [&](float x, float y, float depth) {
        const float scale = near / depth;
        const Rect<float> point{x * scale, x * scale, y * scale, y * scale};
        covered = !isSeen ? point
                          : Rect<float>{
                                std::min(covered.left, point.left), std::max(covered.right, point.right),
                                std::min(covered.bottom, point.bottom), std::max(covered.top, point.top)};
        isSeen = true;
    };
    for (const Vector<float>& corner : corners)
        if (-corner.ElementAt(2) >= near)
            include(corner.ElementAt(0), corner.ElementAt(1), -corner.ElementAt(2));
    // Where edges of the box pass through the near plane.
    constexpr std::array<std::array<std::size_t, 2>, 12> kEdges = {
        {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6}, {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}}};
    for (const auto& edge : kEdges) {
        const Vector<float>& from = corners[edge[0]];
        const Vector<float> along = corners[edge[1]] - from;
        const float fromDepth = -from.ElementAt(2);
        const float toDepth = -corners[edge[1]].ElementAt(2);
        if ((fromDepth < near) == (toDepth < near))
            continue;
        const float part = (near - fromDepth) / (toDepth - fromDepth);
        include(from.ElementAt(0) + part * along.ElementAt(0), from.ElementAt(1) + part * along.ElementAt(1), near);
    }
    if (isSeen)
        rect = covered;
    return isSeen;
}
