// A frame of radiances.
#include "radianceframe.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "bodies.h"
#include "flareshape.h"
#include "glapi.h"
#include "glstate.h"
#include "matrix.h"
#include "sphere.h"
#include "terrains.h"

namespace sorvane {
namespace {
constexpr int kMostSamples = 4096;
// Of the framebuffer in which the rest of the picture is drawn, part by part.
constexpr int kLargestPart = 2048;
// Of a sphere that stands for a flare: its outline has a part in 700 less than a circle.
constexpr int kSlicesOfFlare = 64;
// Boxes are flat: what reaches farther about the eye than this is seen in the picture alone.
constexpr double kLargestTangent = 1.0;
constexpr std::size_t kNone = std::numeric_limits<std::size_t>::max();

std::array<double, 9> rotationBetween(const LookAt& from, const LookAt& to) {
    std::array<double, 9> product{};
    for (int row = 0, place = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column, ++place)
            for (int axis = 0; axis < 3; ++axis)
                product[static_cast<std::size_t>(place)] +=
                    static_cast<double>(to.rotation()(row, axis)) * static_cast<double>(from.rotation()(column, axis));
    return product;
}

std::array<double, 3> fromEye(const LookAt& lookAt, const float (&position)[3]) {
    std::array<double, 3> way{};
    for (int axis = 0; axis < 3; ++axis)
        way[static_cast<std::size_t>(axis)] =
            static_cast<double>(position[axis]) - static_cast<double>(lookAt.eye().ElementAt(axis));
    return way;
}

// Looks from the picture's eye along `way`, but not straight up or down, where a picture has no sides.
LookAt lookAlong(const LookAt& picture, std::array<double, 3> way) {
    constexpr double kLeastTilt = 1e-3;
    const double length = std::hypot(way[0], way[1], way[2]);
    if (std::hypot(way[0], way[1]) < kLeastTilt * length)
        way[0] += kLeastTilt * length;
    const auto component = [&](std::size_t axis) {
        return static_cast<float>(100.0 * way[axis] / length);
    };
    return {picture.eye(), Vector<float>(component(0), component(1), component(2), 0.0F)};
}

std::array<double, 3> turned(const Matrix<float>& model, const std::array<float, 3>& point) {
    std::array<double, 3> product{};
    for (int row = 0; row < 3; ++row)
        for (int axis = 0; axis < 3; ++axis)
            product[static_cast<std::size_t>(row)] +=
                static_cast<double>(model(row, axis)) * static_cast<double>(point[static_cast<std::size_t>(axis)]);
    return product;
}

void loadProjection(const TangentBox& box) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glFrustum(
        box.left * kNearDepth, box.right * kNearDepth, box.bottom * kNearDepth, box.top * kNearDepth, kNearDepth,
        kFarDepth);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}
} // namespace

std::optional<RadiancePicture> RadianceFrame::draw(
    const std::vector<SceneEngagement>& engagements, const Camera& camera, const RadianceRequest& request) {
    const RadianceDrawing drawing(request.background);
    request_ = request;
    const PixelPlane plane(request.fieldOfViewDegrees, request.width, request.height);
    const LookAt lookAt(camera);
    collect(engagements, camera, request.time);
    RadianceSums sums(plane);
    const std::vector<FineBox> boxes = fineBoxes(lookAt, plane);
    for (std::size_t number = 0; number < boxes.size(); ++number) {
        const auto& [eye, sampled, angle, subject] = boxes[number];
        if (!drawBox(eye, sampled.box, sampled.columns, sampled.rows, number))
            return std::nullopt;
        sums.add(sampled, buffer_.read());
    }
    std::vector<float> rest(static_cast<std::size_t>(request.width) * static_cast<std::size_t>(request.height));
    if (!drawRest(lookAt, plane, rest))
        return std::nullopt;
    return RadiancePicture{request.width, request.height, sums.over(rest)};
}

std::optional<float> RadianceFrame::sample(
    const std::vector<SceneEngagement>& engagements, const Camera& camera, const RadianceRequest& request,
    const TangentBox& box) {
    const RadianceDrawing drawing(request.background);
    request_ = request;
    collect(engagements, camera, request.time);
    if (!drawBox(LookAt(camera), box, 1, 1, kNone))
        return std::nullopt;
    return buffer_.read().front();
}

void RadianceFrame::collect(const std::vector<SceneEngagement>& engagements, const Camera& camera, double time) {
    states_.clear();
    subjects_.clear();
    grounds_.clear();
    const LookAt lookAt(camera);
    for (const SceneEngagement& shown : engagements) {
        etxyz& engagement = *shown.engagement;
        if (shown.isHidden)
            continue;
        const bool hasBodies = request_.bodiesOf.value_or(shown.id) == shown.id;
        if (engagement.areHardbodiesInitialized() && request_.showTerrain)
            grounds_.push_back(&shown);
        if (engagement.keyframes.isEmpty() || !hasBodies)
            continue;
        const keyframe& state = states_.emplace_back(engagement.InterpolatedFrame(time));
        const auto addBody = [&](Hardbody* body, const float(&position)[3], const float(&attitude)[3]) {
            if (engagement.areHardbodiesInitialized() && body != nullptr && body->isUsable())
                subjects_.push_back({&shown, body, nullptr, &position, &attitude, double{body->reach()}});
        };
        addBody(engagement.target.get(), state.targetPos, state.targetAtt);
        if (camera.mode() != ViewGyro) // the eye sits in the threat
            addBody(engagement.threat.get(), state.threatPos, state.threatAtt);
        for (const flareKeyframe& flare : state.flares) {
            if (!request_.showFlares)
                break;
            const auto [x, y, z] = fromEye(lookAt, flare.pos);
            const double distance = std::hypot(x, y, z);
            if (distance > 0.0 && flare.scalar != 0.0F && std::isfinite(distance) && std::isfinite(flare.scalar))
                subjects_.push_back(
                    {&shown, nullptr, &flare, &flare.pos, nullptr, std::ranges::max(halfAxesOf(flare, distance))});
        }
    }
}

// Points about a subject's position between which all of it lies: a body's corners, for what its files say of its size
// need not be true, or the corners of a box about a flare.
std::vector<std::array<double, 3>> RadianceFrame::outlineOf(const Subject& subject, const LookAt& lookAt) {
    std::vector<std::array<double, 3>> outline;
    if (subject.body != nullptr) {
        const float(&attitude)[3] = *subject.attitude;
        const Matrix<float> model =
            BuildTransform(1.0F, 1.0F, 1.0F, attitude[0] + 180.0F, attitude[1], attitude[2], 0.0F, 0.0F, 0.0F);
        const BodyParts& parts = subject.body->model()->parts();
        const std::span vertices(parts.arrays.vertices_.get(), static_cast<std::size_t>(parts.vertexCount));
        outline.reserve(vertices.size());
        for (const auto& [x, y, z] : vertices)
            outline.push_back(turned(model, {x, y, z}));
        return outline;
    }
    const auto [x, y, z] = fromEye(lookAt, *subject.position);
    const Matrix<float> model = modelOf(*subject.flare, halfAxesOf(*subject.flare, std::hypot(x, y, z)));
    for (const float right : {-1.0F, 1.0F})
        for (const float up : {-1.0F, 1.0F})
            for (const float back : {-1.0F, 1.0F})
                outline.push_back(turned(model, {right, up, back}));
    return outline;
}

// Nothing for what is as fine as need be in the picture, out of it, or about the eye.
std::optional<RadianceFrame::FineBox>
RadianceFrame::fineBoxOf(const Subject& subject, const LookAt& lookAt, const PixelPlane& plane) const {
    if (!std::isfinite(subject.radius))
        return std::nullopt;
    const std::vector<std::array<double, 3>> outline = outlineOf(subject, lookAt);
    if (outline.empty())
        return std::nullopt;
    std::array<double, 3> way = fromEye(lookAt, *subject.position);
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto component = [&](const std::array<double, 3>& point) {
            return point[axis];
        };
        const auto [least, greatest] = std::ranges::minmax(outline, {}, component);
        way[axis] += (component(least) + component(greatest)) / 2.0;
    }
    const double distance = std::hypot(way[0], way[1], way[2]);
    if (!(distance > 0.0) || !std::isfinite(distance))
        return std::nullopt;

    FineBox fine{lookAlong(lookAt, way), {}, 0.0, &subject};
    const std::array<double, 3> centre = fine.lookAt.inEye(*subject.position);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    TangentBox box{kInfinity, -kInfinity, kInfinity, -kInfinity};
    for (const std::array<double, 3>& point : outline) {
        std::array<double, 3> inEye = centre;
        for (std::size_t row = 0; row < 3; ++row)
            for (std::size_t axis = 0; axis < 3; ++axis)
                inEye[row] +=
                    static_cast<double>(fine.lookAt.rotation()(static_cast<int>(row), static_cast<int>(axis))) *
                    point[axis];
        const double depth = -inEye[2];
        if (!(depth > kNearDepth))
            return std::nullopt;
        box = {
            std::min(box.left, inEye[0] / depth), std::max(box.right, inEye[0] / depth),
            std::min(box.bottom, inEye[1] / depth), std::max(box.top, inEye[1] / depth)};
    }
    // A part in a million more on each side, so that rounding cuts nothing off; never without any extent.
    const double margin = 1e-6 * std::max(box.right - box.left, box.top - box.bottom) + 1e-12;
    box = {box.left - margin, box.right + margin, box.bottom - margin, box.top + margin};
    if (std::max({-box.left, box.right, -box.bottom, box.top}) > kLargestTangent)
        return std::nullopt;

    const int wanted = subject.body != nullptr ? request_.fineness.body : request_.fineness.flare;
    const auto samplesOf = [&](double extent) {
        return std::min(request_.fineness.pixel * extent / plane.pitch(), double{kMostSamples});
    };
    const double across = samplesOf(box.right - box.left);
    const double upwards = samplesOf(box.top - box.bottom);
    if (across >= wanted && upwards >= wanted)
        return std::nullopt;
    fine.sampled = {
        rotationBetween(fine.lookAt, lookAt), box, std::max(static_cast<int>(across), wanted),
        std::max(static_cast<int>(upwards), wanted)};
    fine.sampleSolidAngle = solidAngleOf(box) / fine.sampled.columns / fine.sampled.rows;
    return fine;
}

// The finest one first.
std::vector<RadianceFrame::FineBox> RadianceFrame::fineBoxes(const LookAt& lookAt, const PixelPlane& plane) {
    glViewport(0, 0, request_.width, request_.height);
    loadProjection(plane.box());
    const Sight sight(lookAt, WindowTransform());
    std::vector<FineBox> boxes;
    for (const Subject& subject : subjects_)
        if (sight.reaches(*subject.position, subject.radius))
            if (auto box = fineBoxOf(subject, lookAt, plane))
                boxes.push_back(*box);
    std::ranges::stable_sort(boxes, {}, &FineBox::sampleSolidAngle);
    for (std::size_t number = 0; number < boxes.size(); ++number)
        subjects_[static_cast<std::size_t>(boxes[number].subject - subjects_.data())].box = number;
    return boxes;
}

// Draws what has no box, or one that isn't finer than `finestBox`.
bool RadianceFrame::drawBox(const LookAt& lookAt, const TangentBox& box, int columns, int rows, std::size_t finestBox) {
    if (!buffer_.bind(columns, rows))
        return false;
    loadProjection(box);
    const Sight sight(lookAt, WindowTransform());
    depth_.draw([&](const DepthSlice& slice) {
        lookAt.loadWorld();
        SliceOfTerrains terrains(lookAt, sight, slice, request_.loadsTerrain, 1.0F);
        for (const SceneEngagement* const ground : grounds_)
            terrains.draw(*ground->engagement);
        drawSubjects(lookAt, sight, slice, finestBox);
    });
    return true;
}

void RadianceFrame::drawSubjects(
    const LookAt& lookAt, const Sight& sight, const DepthSlice& slice, std::size_t finestBox) {
    for (const Subject& subject : subjects_) {
        const double depth = lookAt.depthOf(*subject.position);
        const bool isWanted = !subject.box || (finestBox != kNone && *subject.box >= finestBox);
        if (isWanted && slice.reaches({depth - subject.radius, depth + subject.radius}) &&
            sight.reaches(*subject.position, subject.radius))
            drawSubject(subject, lookAt);
    }
}

void RadianceFrame::drawSubject(const Subject& subject, const LookAt& lookAt) const {
    const PushedMatrix matrix;
    if (subject.body != nullptr) {
        const AtmFile* const atmosphere = subject.shown->engagement->atm.get();
        const Vector<float> sun =
            atmosphere == nullptr ? Vector<float>() : sunDirectionInEye(*atmosphere, lookAt.rotation().data());
        BodyLight light = subject.body->light();
        light.brightness = 1.0F;
        if (!request_.light.hasSun)
            light.solarBeam = 0.0F;
        if (!request_.light.hasSkyAndEarth)
            light.skyRadiance = light.earthRadiance = 0.0F;
        drawBody(*subject.body, {*subject.position, *subject.attitude}, lookAt, sun, request_.time, light);
        return;
    }
    const flareKeyframe& flare = *subject.flare;
    const std::array<double, 3> way = fromEye(lookAt, flare.pos);
    const std::array<float, 3> halfAxes = halfAxesOf(flare, std::hypot(way[0], way[1], way[2]));
    const FlareUnits& units = request_.flareUnits;
    const double area = projectedArea(flare, halfAxes, way) * units.centimetres * units.centimetres;
    const auto radiance = static_cast<float>(double{flare.scalar} * units.intensity / area);
    lookAt.load(flare.pos);
    glMultMatrixf(modelOf(flare, halfAxes).data());
    glColor4f(radiance, radiance, radiance, 1.0F);
    drawUnitSphere(kSlicesOfFlare);
}

// What has no box, each pixel the mean of its samples.
bool RadianceFrame::drawRest(const LookAt& lookAt, const PixelPlane& plane, std::vector<float>& rest) {
    const int side = request_.fineness.pixel;
    const int pixels = kLargestPart / side;
    for (int firstRow = 0; firstRow < plane.height(); firstRow += pixels)
        for (int firstColumn = 0; firstColumn < plane.width(); firstColumn += pixels) {
            const int columns = std::min(pixels, plane.width() - firstColumn);
            const int rows = std::min(pixels, plane.height() - firstRow);
            const TangentBox first = plane.boxOf(firstColumn, firstRow);
            const TangentBox last = plane.boxOf(firstColumn + columns - 1, firstRow + rows - 1);
            const int samples = columns * side;
            if (!drawBox(lookAt, {first.left, last.right, last.bottom, first.top}, samples, rows * side, kNone))
                return false;
            const std::vector<float> values = buffer_.read();
            for (int row = 0; row < rows; ++row)
                for (int column = 0; column < columns; ++column) {
                    double sum = 0.0;
                    for (int j = 0; j < side; ++j)
                        for (int i = 0; i < side; ++i)
                            sum += values
                                [static_cast<std::size_t>((rows - 1 - row) * side + j) *
                                     static_cast<std::size_t>(samples) +
                                 static_cast<std::size_t>(column * side + i)];
                    rest
                        [static_cast<std::size_t>(firstRow + row) * static_cast<std::size_t>(plane.width()) +
                         static_cast<std::size_t>(firstColumn + column)] = static_cast<float>(sum / (side * side));
                }
        }
    return true;
}
} // namespace sorvane
