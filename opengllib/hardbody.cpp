// A faceted body shaded from infrared signature data: target or threat.
#include "hardbody.h"

#include <algorithm>
#include <filesystem>
#include <new>
#include <span>

#include <GL/glew.h>

#include "dynamicdata.h"
#include "fail.h"
#include "subfacetfile.h"
#include "vnlfile.h"

using namespace sorvane;

bool Hardbody::Init(
    const std::string& brdfPath, const std::string& vnlPath, const std::string& radPath, const std::string& shaderDir,
    const std::string& rotorPath, bool doBrdf, bool antialias, bool multiFacet, bool rotors, bool perFrameUpload,
    float p0, float p1, float p2, float p3, float p4, float p5, float range, const float& earthRadiance,
    const float& skyRadiance, const float& solarBeam) {
    model_.reset();
    multiFacetEye_.reset();
    flags_ = {doBrdf, antialias, multiFacet, rotors, perFrameUpload};
    parameters_ = {p0, p1, p2, p3, p4, p5};
    range_ = range;

    const Origin origin{brdfPath,      vnlPath,     radPath,  shaderDir, rotors ? rotorPath : std::string(),
                        earthRadiance, skyRadiance, solarBeam};
    ContentKey key = keyOf(origin);
    model_ = BodyModel::cache().find(key);
    if (model_ != nullptr)
        return true;
    try {
        MessageRecord record;
        std::unique_ptr<BodyParts> parts = load(origin);
        if (parts == nullptr)
            return false;
        model_ = std::make_shared<BodyModel>(std::move(parts));
        BodyModel::cache().add(model_, std::move(key), record.take());
        return true;
    } catch (const std::bad_alloc&) {
        model_.reset();
        return fail("Init", "Out of memory.");
    }
}

ContentKey Hardbody::keyOf(const Origin& origin) const {
    ContentKey key;
    for (const std::string& path :
         {origin.brdfPath, origin.vnlPath, SubfacetFile::pathBeside(origin.vnlPath), origin.radPath, origin.rotorPath,
          BodyShader::vertexPath(origin.shaderDir), BodyShader::fragmentPath(origin.shaderDir)})
        key.addFile(path);
    key.addValues(
        flags_.multiFacet, flags_.perFrameUpload, range_, origin.earthRadiance, origin.skyRadiance, origin.solarBeam);
    return key;
}

std::unique_ptr<BodyParts> Hardbody::load(const Origin& origin) const {
    auto parts = std::make_unique<BodyParts>();
    parts->isUploadedEachFrame = flags_.perFrameUpload;
    if (!origin.rotorPath.empty())
        parts->rotor = std::make_unique<Rotor>(origin.rotorPath.c_str());
    RadFile rad;
    if (!loadFiles(origin, *parts, rad) || !loadSubfacets(origin.vnlPath, rad, *parts))
        return nullptr;
    parts->grey = range_ * meanRadiance(*parts, origin.earthRadiance, origin.skyRadiance);
    parts->light = {origin.earthRadiance, origin.skyRadiance, origin.solarBeam, range_};
    if (!flags_.perFrameUpload) {
        parts->shader = std::make_unique<BodyShader>();
        if (!parts->shader->Init(origin.shaderDir))
            return nullptr;
    }
    if (!parts->buffers.create(parts->arrays, parts->facets, flags_.perFrameUpload)) {
        fail("Init", "Vertex buffer creation failed.");
        return nullptr;
    }
    return parts;
}

bool Hardbody::loadFiles(const Origin& origin, BodyParts& parts, RadFile& rad) {
    if (!parts.brdf.Load(origin.brdfPath))
        return false;
    parts.facets = parts.brdf.numFacets();
    parts.vertexCount = parts.brdf.numVertices();
    if (!AllocateBuffers(parts) || !rad.Load(origin.radPath, parts.facets))
        return false;
    const FacetArrays& arrays = parts.arrays;
    VnlFile vnl;
    if (!vnl.Load(
            origin.vnlPath, parts.brdf, rad, arrays.indices_.get(), arrays.vertices_.get(), arrays.normals_.get(),
            arrays.primaryColors_.get(), arrays.secondaryColors_.get(), arrays.facetCentroids_.get(),
            arrays.facetNormals_.get(), arrays.facetMap_.get()))
        return false;
    parts.box = vnl.boundingBox();
    return true;
}

bool Hardbody::AllocateBuffers(BodyParts& parts) {
    FacetArrays& arrays = parts.arrays;
    if (arrays.allocate(parts.facets))
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
        address(arrays.vertices_), address(arrays.normals_), address(arrays.primaryColors_),
        address(arrays.secondaryColors_), address(arrays.indices_), address(arrays.facetMap_),
        address(arrays.facetCentroids_), address(arrays.facetNormals_), address(arrays.multiFacetRadiances_),
        address(arrays.tempArray_), address(arrays.earth_form_factors_), address(arrays.sky_form_factors_));
}

// A body without form factors is usual and no fault; form factors of another body are one as soon as they are used.
bool Hardbody::loadSubfacets(const std::string& vnlPath, const RadFile& rad, BodyParts& parts) const {
    const auto count = static_cast<std::size_t>(parts.facets);
    const std::span earth(parts.arrays.earth_form_factors_.get(), count);
    const std::span sky(parts.arrays.sky_form_factors_.get(), count);
    SubfacetFile subfacets;
    const bool isLoaded = subfacets.Load(SubfacetFile::pathBeside(vnlPath), earth, sky);
    parts.hasFormFactorFault = !isLoaded && std::filesystem::exists(SubfacetFile::pathBeside(vnlPath));
    if (isLoaded && flags_.multiFacet) {
        const std::span normals(parts.arrays.facetNormals_.get(), count);
        if (!subfacets.Init(normals))
            return fail("Init", "Subfacet object initialization failed.");
        parts.multiFacet.emplace().init(
            subfacets, parts.brdf, normals, std::span(parts.arrays.facetCentroids_.get(), count),
            std::span(rad.rad(), count));
    }
    if (!isLoaded || subfacets.facetCount() != count) {
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
    if (!isUsable() || !model_->parts().multiFacet)
        return;
    // The model matrix turns and moves; its inverse moves back and turns by the transpose.
    Vector<float> modelEye(0.0F, 0.0F, 0.0F, 1.0F);
    for (int axis = 0; axis < 3; ++axis)
        for (int row = 0; row < 3; ++row)
            modelEye.ElementAt(axis) += modelMatrix_(row, axis) * (eye.ElementAt(row) - modelMatrix_(row, 3));
    multiFacetEye_ = modelEye;
    model_->reflectedTowards(modelEye);
}

void Hardbody::Render(Dynamic_Data* data) {
    if (!isUsable() || data == nullptr)
        return;
    glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    Matrix<float> fromOrigin = modelMatrix_;
    for (int axis = 0; axis < 3; ++axis)
        fromOrigin(axis, 3) -= data->origin[static_cast<std::size_t>(axis)];
    glMultMatrixf(fromOrigin.data());

    model_->draw(multiFacetEye_, *data);
    glPopMatrix();
    glPopClientAttrib();
}

BoxCorners Hardbody::emptyBox() {
    BoxCorners corners;
    corners.fill({0.0F, 0.0F, 0.0F, 1.0F});
    return corners;
}

BoxCorners Hardbody::GetTransformedBBox() const {
    BoxCorners corners = BBox();
    if (isUsable())
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
    if (!isUsable())
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
