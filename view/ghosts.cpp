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

Vertex relativeTo(const Vertex& origin, const Triple& place) {
    Vertex vertex{};
    for (std::size_t axis = 0; axis < 3; ++axis)
        vertex[axis] = static_cast<float>(place[axis] - static_cast<double>(origin[axis]));
    return vertex;
}

Triple between(const Triple& earlier, const Triple& later, double part) {
    Triple place{};
    for (std::size_t axis = 0; axis < 3; ++axis)
        place[axis] = (1.0 - part) * earlier[axis] + part * later[axis];
    return place;
}

Vertex rounded(const Triple& place) {
    return relativeTo({}, place);
}

void useColour(const GhostSet& set, std::size_t number, float alpha) {
    const std::array<float, 3>& colour = set.colours[number];
    glColor4f(colour[0], colour[1], colour[2], alpha);
}
} // namespace

Ghosts::Track::Track(const SampleSeries& series) {
    const std::span<const Sample> samples = series.samples();
    if (!samples.empty())
        origin = samples.front().targetPosition;
    const auto offset = [this](const Triple& place) {
        Vertex vertex{};
        for (std::size_t axis = 0; axis < 3; ++axis)
            vertex[axis] = static_cast<float>(place[axis] - origin[axis]);
        return vertex;
    };
    times.reserve(samples.size());
    target.reserve(samples.size());
    threat.reserve(samples.size());
    for (const Sample& sample : samples) {
        times.push_back(sample.time);
        target.push_back(offset(sample.targetPosition));
        threat.push_back(offset(sample.threatPosition));
    }
}

Triple Ghosts::Track::place(std::size_t sample, bool isThreat) const {
    const Vertex& offset = (isThreat ? threat : target)[sample];
    Triple place = origin;
    for (std::size_t axis = 0; axis < 3; ++axis)
        place[axis] += static_cast<double>(offset[axis]);
    return place;
}

Triple Ghosts::Track::placeAt(double time, bool isThreat) const {
    const auto after = static_cast<std::size_t>(std::ranges::upper_bound(times, time) - times.begin());
    if (after == 0 || after == times.size())
        return place(after == 0 ? 0 : after - 1, isThreat);
    const double part = (time - times[after - 1]) / (times[after] - times[after - 1]);
    return between(place(after - 1, isThreat), place(after, isThreat), part);
}

void Ghosts::forget(EngagementId id) {
    if (tracks_.erase(id) > 0)
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
    // Every n-th sample and the last.
    const auto append = [&](const Track& track, bool isThreat) {
        const std::size_t first = vertices.size();
        const std::size_t count = track.times.size();
        const std::size_t step = count / kMostPoints + 1;
        for (std::size_t i = 0; i < count; i += step)
            vertices.push_back(relativeTo(origin_, track.place(i, isThreat)));
        if (count > 0 && (count - 1) % step != 0)
            vertices.push_back(relativeTo(origin_, track.place(count - 1, isThreat)));
        firsts_.push_back(static_cast<int>(first));
        counts_.push_back(static_cast<int>(vertices.size() - first));
    };
    for (const Shown& ghost : shown) {
        auto known = tracks_.find(ghost.id);
        if (known == tracks_.end())
            known = tracks_.emplace(ghost.id, *ghost.samples->series()).first;
        const Track& track = known->second;
        if (vertices.empty())
            origin_ = rounded(track.origin);
        built_.push_back(ghost.id);
        append(track, false);
        append(track, true);
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
    glEnable(GL_POINT_SMOOTH);
    for (const bool isThreat : {false, true}) {
        glPointSize((isThreat ? kThreatPixels : kTargetPixels) * static_cast<float>(options.pixelRatio));
        glBegin(GL_POINTS);
        for (const Shown& ghost : shown) {
            const Track& track = tracks_.at(ghost.id);
            if (track.times.empty())
                continue;
            const Ghost& look = set.ghosts.at(ghost.id);
            const Triple place = track.placeAt(options.time + look.later, isThreat);
            if (!slice.owns(lookAt.depthOf(rounded(place))))
                continue;
            useColour(set, look.colour, 1.0F);
            glVertex3fv(relativeTo(origin_, place).data());
        }
        glEnd();
    }
}
} // namespace sorvane
