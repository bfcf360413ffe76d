// What shows at a place of a picture: a facet, a flare, ground or the sky.
#include "radiancepick.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>

#include "filechecks.h"
#include "flareshape.h"
#include "loadclsfile.h"
#include "projection.h"
#include "vec3.h"

namespace sorvane {
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

// The nearest thing so far.
struct Nearest {
    double depth = kFarDepth;
    Picked picked{};

    void take(double at, const Picked& thing) {
        if (at > kNearDepth && at < depth) {
            depth = at;
            picked = thing;
        }
    }
};

void lookForFacet(
    const ViewRay& ray, const Hardbody& body, const float (&position)[3], const float (&attitude)[3], Picked thing,
    Nearest& nearest) {
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

void lookForFlare(const ViewRay& ray, const flareKeyframe& flare, EngagementId engagement, Nearest& nearest) {
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

// The tile of the highest ground there, and how high that is.
struct Ground {
    const SubTerrain* tile = nullptr;
    float height = 0.0F;
};
Ground groundAt(Terrain& terrain, float x, float y) {
    Ground highest;
    for (std::size_t i = 0; i < terrain.tileCount(); ++i) {
        const SubTerrain& tile = terrain.tile(i);
        float height = 0.0F;
        if (tile.isLoaded() && tile.getElevation(x, y, height) && (highest.tile == nullptr || height > highest.height))
            highest = {&tile, height};
    }
    return highest;
}

// Walks along the ray in steps of less than a cell until it is below ground. World coordinates are the terrain's turned
// half about x and moved to the threat's first height.
struct GroundHit {
    double depth = 0.0;
    const SubTerrain* tile = nullptr;
    float x = 0.0F; // of the terrain
    float y = 0.0F;
};
std::optional<GroundHit> findGround(const ViewRay& ray, Terrain& terrain, float firstThreatHeight, double farthest) {
    constexpr double kPartOfCell = 0.5;
    constexpr double kMostSteps = 200000.0;
    const double level = std::hypot(ray.direction[0], ray.direction[1]);
    const double cell = std::max({double{terrain.xCellSize()}, double{terrain.yCellSize()}, 1e-3});
    const double step =
        std::max(kPartOfCell * cell / std::max(level, 0.1 * std::abs(ray.direction[2])), farthest / kMostSteps);
    const auto below = [&](double depth) -> std::optional<GroundHit> {
        const auto [x, y, z] = ray.at(depth);
        const GroundHit place{depth, nullptr, static_cast<float>(x), static_cast<float>(-y)};
        const Ground ground = groundAt(terrain, place.x, place.y);
        if (ground.tile == nullptr || double{firstThreatHeight} - z > double{ground.height})
            return std::nullopt;
        return GroundHit{depth, ground.tile, place.x, place.y};
    };
    // No farther than the box of the ground.
    const SubTerrain::Bounds box = terrain.BBox();
    const auto isPast = [&](double depth) {
        const auto [x, y, z] = ray.at(depth);
        const double height = double{firstThreatHeight} - z;
        return (ray.direction[2] <= 0.0 && height > double{box.maximum[2]}) ||
               (ray.direction[0] >= 0.0 && x > double{box.maximum[0]}) ||
               (ray.direction[0] <= 0.0 && x < double{box.minimum[0]}) ||
               (ray.direction[1] <= 0.0 && -y > double{box.maximum[1]}) ||
               (ray.direction[1] >= 0.0 && -y < double{box.minimum[1]});
    };
    for (double depth = step; depth < farthest && !isPast(depth); depth += step)
        if (std::optional<GroundHit> hit = below(depth)) {
            constexpr int kHalvings = 20;
            double above = depth - step;
            for (int i = 0; i < kHalvings; ++i) {
                const double middle = (above + hit->depth) / 2.0;
                if (const std::optional<GroundHit> nearer = below(middle))
                    hit = nearer;
                else
                    above = middle;
            }
            return hit;
        }
    return std::nullopt;
}
} // namespace

ViewRay rayThrough(const LookAt& lookAt, const Tangents& at) {
    ViewRay ray;
    for (int axis = 0; axis < 3; ++axis) {
        const auto number = static_cast<std::size_t>(axis);
        ray.eye[number] = double{lookAt.eye().ElementAt(axis)};
        ray.direction[number] = at.right * double{lookAt.rotation()(0, axis)} +
                                at.up * double{lookAt.rotation()(1, axis)} - double{lookAt.rotation()(2, axis)};
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
        if (shown.isHidden || !options.showTerrain || engagement.terrain == nullptr || engagement.keyframes.isEmpty() ||
            engagement.terrain->tileCount() == 0)
            continue;
        const std::optional<GroundHit> hit =
            findGround(ray, *engagement.terrain, engagement.keyframeAtZero().threatPos[2], nearest.depth);
        if (!hit)
            continue;
        Picked ground{Picked::Thing::Ground, shown.id, 0, std::nullopt, 0.0F};
        const std::optional<std::size_t> post = hit->tile->postAt(hit->x, hit->y);
        if (const unsigned char* const classes = classesOf(*hit->tile); classes != nullptr && post)
            ground.surfaceClass = classes[*post];
        nearest.take(hit->depth, ground);
    }
    return nearest.picked;
}

const unsigned char* RadiancePick::classesOf(const SubTerrain& tile) {
    const std::string& path = tile.getClassFilePath();
    const auto [entry, isNew] = classes_.try_emplace(path);
    if (isNew && FileExists(path)) {
        const std::optional<RasterSize> size = readRasterSize(path);
        if (size && size->columns == tile.getWidth() && size->rows == tile.getHeight())
            entry->second.reset(loadCLSFile(path));
    }
    return entry->second.get();
}
} // namespace sorvane
