// What bodies made of the same files have in common, and how they are drawn in turn.
#include "bodymodel.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "dynamicdata.h"

namespace sorvane {
namespace {
// A rotor may turn a point about a hub as far out as any point of the body.
constexpr float kReachOfRotors = 3.0F;

float reachOf(std::span<const Tuple3<float>> vertices) {
    float reach = 0.0F;
    for (const auto& [x, y, z] : vertices) {
        const float distance = std::hypot(x, y, z);
        if (!std::isfinite(distance))
            return std::numeric_limits<float>::infinity();
        reach = std::max(reach, distance);
    }
    return reach;
}
} // namespace

float meanRadiance(const BodyParts& parts, float earthRadiance, float skyRadiance) {
    const FacetArrays& arrays = parts.arrays;
    double sum = 0.0;
    double areas = 0.0;
    for (std::size_t k = 0; k < static_cast<std::size_t>(parts.facets); ++k) {
        const std::size_t corner = 3 * static_cast<std::size_t>(arrays.facetMap_[k]);
        const Tuple3<float>* const at = &arrays.vertices_[corner];
        const Vector<float> first(at[1].x - at[0].x, at[1].y - at[0].y, at[1].z - at[0].z, 0.0F);
        const Vector<float> second(at[2].x - at[0].x, at[2].y - at[0].y, at[2].z - at[0].z, 0.0F);
        const double area = Length(Cross(first, second));
        const int brdfClass = parts.brdf.FacetIndxToBrdfClass(static_cast<int>(k));
        const float emissivity =
            brdfClass < 0 ? 1.0F : parts.brdf.classes()[static_cast<std::size_t>(brdfClass)].epsilon;
        const float reflected = (1.0F - emissivity) * (arrays.earth_form_factors_[k] * earthRadiance +
                                                       arrays.sky_form_factors_[k] * skyRadiance);
        const double radiance = arrays.primaryColors_[corner].x + reflected;
        if (!std::isfinite(area * radiance))
            continue;
        sum += area * radiance;
        areas += area;
    }
    return areas > 0.0 ? static_cast<float>(sum / areas) : 0.0F;
}

BodyModel::BodyModel(std::unique_ptr<BodyParts> parts) : parts_(std::move(parts)) {
    const std::span vertices(parts_->arrays.vertices_.get(), static_cast<std::size_t>(parts_->vertexCount));
    reach_ = reachOf(vertices) * (parts_->rotor != nullptr ? kReachOfRotors : 1.0F);
    if (parts_->rotor != nullptr)
        turnedVertices_.assign(vertices.begin(), vertices.end());
}

ContentCache<BodyModel>& BodyModel::cache() {
    static ContentCache<BodyModel> models;
    return models;
}

std::span<const float> BodyModel::reflectedTowards(const std::optional<Vector<float>>& eye) {
    FacetArrays& arrays = parts_->arrays;
    const std::span radiances(arrays.multiFacetRadiances_.get(), static_cast<std::size_t>(parts_->facets));
    if (!parts_->multiFacet || eye == reflectedEye_)
        return radiances;
    if (eye)
        parts_->multiFacet->update(*eye, radiances);
    else
        std::ranges::fill(radiances, 0.0F);
    arrays.spread(radiances.data(), parts_->facets);
    reflectedEye_ = eye;
    areReflectedUploaded_ = false;
    return radiances;
}

// Always from the vertices as loaded, so that nothing adds up over the frames.
void BodyModel::turnRotors(float time) {
    const FacetArrays& arrays = parts_->arrays;
    const Rotor& rotor = *parts_->rotor;
    for (int number = 1; number <= rotor.getRotorCount(); ++number) {
        std::array<float, 16> matrix{};
        rotor.getRotorMatrix(number, time, matrix.data());
        const int last = std::min(rotor.getRotorEnd(number), parts_->facets);
        for (int facet = rotor.getRotorStart(number); facet <= last; ++facet) {
            const auto corner = 3 * static_cast<std::size_t>(arrays.facetMap_[static_cast<std::size_t>(facet - 1)]);
            for (std::size_t i = corner; i < corner + 3; ++i) {
                const Tuple3<float>& vertex = arrays.vertices_[i];
                const std::array<float, 3> point = {vertex.x, vertex.y, vertex.z};
                std::array<float, 3> turned{};
                mat_vtransform_(matrix.data(), point.data(), turned.data());
                turnedVertices_[i] = {turned[0], turned[1], turned[2]};
            }
        }
    }
}

void BodyModel::draw(const std::optional<Vector<float>>& eye, const Dynamic_Data& data) {
    const BodyParts& parts = *parts_;
    if (parts.isUploadedEachFrame) {
        if (parts.rotor != nullptr)
            turnRotors(data.time);
        parts.buffers.uploadVertices(parts.rotor != nullptr ? turnedVertices_.data() : parts.arrays.vertices_.get());
    }
    reflectedTowards(eye);
    if (!areReflectedUploaded_)
        parts.buffers.uploadMultiFacetRadiances(parts.arrays.tempArray_.get());
    areReflectedUploaded_ = true;
    const BodyShader* const shader = parts.shader.get();
    parts.buffers.bind(shader != nullptr ? shader->attributes() : FacetBuffers::Attributes());
    if (shader != nullptr) {
        shader->Activate();
        shader->setLight(data.light.value_or(parts.light));
        shader->setSolarDirection(data.solarDirEyeCoords);
    }
    drawBlocks();
    if (shader != nullptr)
        BodyShader::Deactivate();
}

void BodyModel::drawBlocks() const {
    const BrdfFile& brdf = parts_->brdf;
    for (std::size_t i = 0; i < brdf.classes().size(); ++i) {
        const FacetBlock& block = brdf.blocks()[i];
        if (block.facetCount_ == 0)
            continue;
        if (parts_->shader != nullptr)
            parts_->shader->setClass(brdf.classes()[i]);
        parts_->buffers.draw(block.startIndex_, block.facetCount_);
    }
}
} // namespace sorvane
