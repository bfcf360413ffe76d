// Engagements that are seen beside the one that is followed: thin translucent paths, and points for the bodies.
#include "ghosts.h"

#include <algorithm>

#include "glapi.h"
#include "glstate.h"
#include "lookat.h"

namespace sorvane {
namespace {
constexpr std::size_t kMostPoints = 200; // of a path: what more would show is finer than a path among hundreds
constexpr float kPathAlpha = 0.4F;
constexpr float kThreatPixels = 5.0F; // of the view
constexpr float kTargetPixels = 3.0F;

using Position = Triple Sample::*;

// Every n-th one and the last.
std::vector<Triple> thinned(std::span<const Sample> samples, Position position) {
    std::vector<Triple> points;
    const std::size_t step = samples.size() / kMostPoints + 1;
    for (std::size_t i = 0; i < samples.size(); i += step)
        points.push_back(samples[i].*position);
    if (!samples.empty() && (samples.size() - 1) % step != 0)
        points.push_back(samples.back().*position);
    return points;
}

// Between samples; before the first one and after the last one theirs. Needs at least one.
Triple positionAt(std::span<const Sample> samples, double time, Position position) {
    const auto after = std::ranges::upper_bound(samples, time, {}, &Sample::time);
    if (after == samples.begin())
        return samples.front().*position;
    if (after == samples.end())
        return samples.back().*position;
    const Sample& before = *std::prev(after);
    const double part = (time - before.time) / (after->time - before.time);
    Triple place{};
    for (std::size_t axis = 0; axis < 3; ++axis)
        place[axis] = (1.0 - part) * (before.*position)[axis] + part * ((*after).*position)[axis];
    return place;
}

Vertex relativeTo(const Vertex& origin, const Triple& place) {
    Vertex vertex{};
    for (std::size_t axis = 0; axis < 3; ++axis)
        vertex[axis] = static_cast<float>(place[axis] - static_cast<double>(origin[axis]));
    return vertex;
}

Vertex rounded(const Triple& place) {
    return relativeTo({}, place);
}

void useColour(const GhostSet& set, std::size_t number, float alpha) {
    const std::array<float, 3>& colour = set.colours[number];
    glColor4f(colour[0], colour[1], colour[2], alpha);
}
} // namespace

void Ghosts::forget(EngagementId id) {
    if (paths_.erase(id) > 0)
        built_.clear();
}

void Ghosts::draw(
    const std::vector<Shown>& shown, const GhostSet& set, const LookAt& lookAt, const DepthSlice& slice,
    const Options& options) {
    if (shown.empty())
        return;
    if (!std::ranges::equal(shown, built_, {}, &Shown::id))
        build(shown);
    const PushedMatrix matrix;
    const PushedAttributes attributes(
        GL_CURRENT_BIT | GL_LINE_BIT | GL_POINT_BIT | GL_ENABLE_BIT | GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glDisable(GL_LIGHTING);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE); // a picture of the frame stays opaque
    glDepthMask(GL_FALSE);
    lookAt.load(origin_);
    if (slice.reaches(lookAt.depthsOf(buffer_.box(), origin_)))
        drawPaths(set, options);
    drawBodies(shown, set, lookAt, slice, options);
}

void Ghosts::build(const std::vector<Shown>& shown) {
    built_.clear();
    firsts_.clear();
    counts_.clear();
    std::vector<Vertex> vertices;
    const auto append = [&](const std::vector<Point>& path) {
        firsts_.push_back(static_cast<int>(vertices.size()));
        counts_.push_back(static_cast<int>(path.size()));
        for (const Point& point : path)
            vertices.push_back(relativeTo(origin_, point));
    };
    for (const Shown& ghost : shown) {
        const auto [paths, isNew] = paths_.try_emplace(ghost.id);
        if (isNew)
            paths->second = {
                thinned(ghost.samples->samples(), &Sample::targetPosition),
                thinned(ghost.samples->samples(), &Sample::threatPosition)};
        if (vertices.empty() && !paths->second.target.empty())
            origin_ = rounded(paths->second.target.front());
        built_.push_back(ghost.id);
        append(paths->second.target);
        append(paths->second.threat);
    }
    buffer_.assign(std::move(vertices));
}

// One call for the paths of one colour.
void Ghosts::drawPaths(const GhostSet& set, const Options& options) {
    std::vector<std::vector<int>> firsts(set.colours.size());
    std::vector<std::vector<int>> counts(set.colours.size());
    for (std::size_t i = 0; i < built_.size(); ++i) {
        const std::size_t colour = set.ghosts.at(built_[i]).colour;
        for (const std::size_t path : {2 * i, 2 * i + 1}) {
            firsts[colour].push_back(firsts_[path]);
            counts[colour].push_back(counts_[path]);
        }
    }
    glLineWidth(static_cast<float>(options.pixelRatio));
    for (std::size_t colour = 0; colour < set.colours.size(); ++colour) {
        useColour(set, colour, kPathAlpha);
        buffer_.drawRuns(GL_LINE_STRIP, firsts[colour], counts[colour]);
    }
}

void Ghosts::drawBodies(
    const std::vector<Shown>& shown, const GhostSet& set, const LookAt& lookAt, const DepthSlice& slice,
    const Options& options) const {
    struct Body {
        Position position;
        float pixels;
    };
    glEnable(GL_POINT_SMOOTH);
    for (const Body& body :
         {Body{&Sample::targetPosition, kTargetPixels}, Body{&Sample::threatPosition, kThreatPixels}}) {
        glPointSize(body.pixels * static_cast<float>(options.pixelRatio));
        glBegin(GL_POINTS);
        for (const Shown& ghost : shown) {
            const std::span<const Sample> samples = ghost.samples->samples();
            if (samples.empty())
                continue;
            const Ghost& look = set.ghosts.at(ghost.id);
            const Triple place = positionAt(samples, options.time + look.later, body.position);
            if (!slice.owns(lookAt.depthOf(rounded(place))))
                continue;
            useColour(set, look.colour, 1.0F);
            glVertex3fv(relativeTo(origin_, place).data());
        }
        glEnd();
    }
}
} // namespace sorvane
