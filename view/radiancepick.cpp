// What shows at a place of a picture: a facet, a flare, ground or the sky.
#include "radiancepick.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "flareshape.h"
#include "groundray.h"
#include "loadclsfile.h"
#include "projection.h"
#include "vec3.h"

namespace sorvane {
struct RadiancePick::Nearest {
    double depth = kFarDepth;
    Picked picked{};

    void take(double at, const Picked& thing) {
        if (at > kNearDepth && at < depth) {
            depth = at;
            picked = thing;
        }
    }
};

namespace {
Vec3d vector(const std::array<double, 3>& v) {
    return {v[0], v[1], v[2]};
}
template <class T> Vec3d vector(const T (&v)[3]) {
    return {double{v[0]}, double{v[1]}, double{v[2]}};
}

// The rows of the inverse of a rotation, without what moves: model coordinates of a world direction.
Vec3d inModel(const Matrix<float>& model, const Vec3d& world) {
    const auto along = [&](int axis) {
        return double{model(0, axis)} * world.x + double{model(1, axis)} * world.y + double{model(2, axis)} * world.z;
    };
    return {along(0), along(1), along(2)};
}

// The depth at which a ray meets a triangle from its front, where the corners run counter-clockwise. After Möller and
// Trumbore, "Fast, minimum storage ray/triangle intersection", 1997.
std::optional<double> depthOfTriangle(const Vec3d& eye, const Vec3d& way, const std::array<Vec3d, 3>& corners) {
    const Vec3d first = corners[1] - corners[0];
    const Vec3d second = corners[2] - corners[0];
    const Vec3d across = cross(way, second);
    const double determinant = dot(first, across);
    if (!(determinant > 0.0))
        return std::nullopt;
    const Vec3d from = eye - corners[0];
    const double u = dot(from, across);
    const Vec3d normal = cross(from, first);
    const double v = dot(way, normal);
    if (!(u >= 0.0 && v >= 0.0 && u + v <= determinant))
        return std::nullopt;
    return dot(second, normal) / determinant;
}

void lookForFacet(
    const ViewRay& ray, const Hardbody& body, const float (&position)[3], const float (&attitude)[3], Picked thing,
    RadiancePick::Nearest& nearest) {
    const Vec3d eye = vector(ray.eye) - vector(position);
    const Vec3d way = vector(ray.direction);
    // None of it is nearer to the ray than it reaches.
    const double along = dot(eye, way) / dot(way, way);
    if (!(length(eye - along * way) <= double{body.reach()}))
        return;
    const Matrix<float> model =
        BuildTransform(1.0F, 1.0F, 1.0F, attitude[0] + 180.0F, attitude[1], attitude[2], 0.0F, 0.0F, 0.0F);
    const Vec3d modelEye = inModel(model, eye);
    const Vec3d modelWay = inModel(model, way);
    const BodyParts& parts = body.model()->parts();
    for (int facet = 0; facet < parts.facets; ++facet) {
        const std::size_t corner =
            3 * static_cast<std::size_t>(parts.arrays.facetMap_[static_cast<std::size_t>(facet)]);
        std::array<Vec3d, 3> corners;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const Tuple3<float>& vertex = parts.arrays.vertices_[corner + i];
            corners[i] = {double{vertex.x}, double{vertex.y}, double{vertex.z}};
        }
        const std::optional<double> depth = depthOfTriangle(modelEye, modelWay, corners);
        if (!depth)
            continue;
        thing.number = facet + 1;
        const int surface = parts.brdf.FacetIndxToBrdfClass(facet);
        thing.surfaceClass = surface < 0 ? std::nullopt : std::optional(surface);
        thing.ownRadiance = parts.arrays.primaryColors_[corner].x;
        nearest.take(*depth, thing);
    }
}

void lookForFlare(
    const ViewRay& ray, const flareKeyframe& flare, EngagementId engagement, RadiancePick::Nearest& nearest) {
    const Vec3d eye = vector(ray.eye) - vector(flare.pos);
    if (flare.scalar == 0.0F || !std::isfinite(flare.scalar) || !std::isfinite(length(eye)))
        return;
    const std::array<float, 3> halfAxes = halfAxesOf(flare, length(eye));
    const Matrix<float> turn = modelOf(flare, {1.0F, 1.0F, 1.0F});
    const auto inUnits = [&](const Vec3d& world) {
        const Vec3d turned = inModel(turn, world);
        return Vec3d{turned.x / double{halfAxes[0]}, turned.y / double{halfAxes[1]}, turned.z / double{halfAxes[2]}};
    };
    // |e + t w|² = 1
    const Vec3d e = inUnits(eye);
    const Vec3d w = inUnits(vector(ray.direction));
    const double square = dot(w, w);
    const double half = dot(e, w);
    const double discriminant = half * half - square * (dot(e, e) - 1.0);
    if (discriminant >= 0.0 && square > 0.0)
        nearest.take(
            (-half - std::sqrt(discriminant)) / square,
            {Picked::Thing::Flare, engagement, flare.id, std::nullopt, 0.0F});
}

// World coordinates are the terrain's turned half about x and moved to the threat's first height.
GroundRay inTerrain(const ViewRay& ray, float firstThreatHeight, double farthest) {
    const auto& [x, y, z] = ray.eye;
    const auto& [right, forward, down] = ray.direction;
    return {{x, -y, double{firstThreatHeight} - z}, {right, -forward, -down}, farthest};
}
} // namespace

ViewRay rayThrough(const LookAt& lookAt, const Tangents& at) {
    ViewRay ray;
    for (int axis = 0; axis < 3; ++axis) {
        const auto number = static_cast<std::size_t>(axis);
        const auto turned = [&](int row) {
            return static_cast<double>(lookAt.rotation()(row, axis));
        };
        ray.eye[number] = static_cast<double>(lookAt.eye().ElementAt(axis));
        ray.direction[number] = at.right * turned(0) + at.up * turned(1) - turned(2);
    }
    return ray;
}

Picked RadiancePick::along(
    const ViewRay& ray, const std::vector<SceneEngagement>& engagements, ViewMode mode, const SceneOptions& options) {
    Nearest nearest;
    for (const SceneEngagement& shown : engagements) {
        etxyz& engagement = *shown.engagement;
        if (shown.isHidden || engagement.keyframes.isEmpty())
            continue;
        const keyframe state = engagement.InterpolatedFrame(options.time);
        const auto lookForBody = [&](const Hardbody* body, const float(&position)[3], const float(&attitude)[3],
                                     Picked::Thing thing) {
            if (engagement.areHardbodiesInitialized() && body != nullptr && body->isUsable())
                lookForFacet(ray, *body, position, attitude, {thing, shown.id, 0, std::nullopt, 0.0F}, nearest);
        };
        lookForBody(engagement.target.get(), state.targetPos, state.targetAtt, Picked::Thing::Target);
        if (mode != ViewGyro)
            lookForBody(engagement.threat.get(), state.threatPos, state.threatAtt, Picked::Thing::Threat);
        for (const flareKeyframe& flare : state.flares)
            lookForFlare(ray, flare, shown.id, nearest);
    }
    for (const SceneEngagement& shown : engagements) {
        etxyz& engagement = *shown.engagement;
        if (shown.isHidden || !options.showTerrain || !engagement.areHardbodiesInitialized() ||
            engagement.terrain == nullptr || engagement.keyframes.isEmpty())
            continue;
        for (std::size_t i = 0; i < engagement.terrain->tileCount(); ++i)
            lookForGround(
                ray, engagement.terrain->tile(i), engagement.keyframeAtZero().threatPos[2], shown.id, nearest);
    }
    return nearest.picked;
}

void RadiancePick::lookForGround(
    const ViewRay& ray, const SubTerrain& tile, float firstThreatHeight, EngagementId engagement, Nearest& nearest) {
    const TileContent* const content = tile.content();
    if (!tile.isLoaded() || content == nullptr || content->rasters->heights == nullptr)
        return;
    const TilePlacement& placement = tile.placement();
    const std::size_t posts = static_cast<std::size_t>(placement.columns) * static_cast<std::size_t>(placement.rows);
    const std::optional<GroundHit> hit = meetGround(
        {placement, {content->rasters->heights.get(), posts}, tile.meshBounds()},
        inTerrain(ray, firstThreatHeight, nearest.depth));
    if (!hit)
        return;
    Picked ground{Picked::Thing::Ground, engagement, 0, std::nullopt, 0.0F};
    if (const unsigned char* const classes = classesOf(tile))
        ground.surfaceClass = classes[hit->post];
    nearest.take(hit->depth, ground);
}

const unsigned char* RadiancePick::classesOf(const SubTerrain& tile) {
    const std::string& path = tile.getClassFilePath();
    std::error_code problem;
    const auto written = std::filesystem::last_write_time(path, problem);
    if (problem)
        return nullptr;
    const auto [entry, isNew] = classes_.try_emplace(path);
    auto& [raster, stamp] = entry->second;
    if (isNew || stamp != written) {
        stamp = written;
        const std::optional<RasterSize> size = readRasterSize(path);
        const bool isWhole = size && size->columns == tile.getWidth() && size->rows == tile.getHeight();
        raster.reset(isWhole ? loadCLSFile(path) : nullptr);
    }
    return raster.get();
}
} // namespace sorvane
