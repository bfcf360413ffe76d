// The paths that the flares of one engagement have left behind.
#include "flaretrails.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "glapi.h"

namespace sorvane {
namespace {
struct Sighting {
    std::size_t sample;
    Vertex position;
};

// Every flare's sightings in time order, the flares in the order of their first appearance.
std::vector<std::vector<Sighting>> sightingsById(const QMap<double, keyframe>& keyframes, const Vertex& origin) {
    std::vector<std::vector<Sighting>> flares;
    std::unordered_map<int, std::size_t> indexOfId;
    std::size_t sample = 0;
    for (const keyframe& frame : keyframes) {
        for (const flareKeyframe& flare : frame.flares) {
            const auto [entry, isNew] = indexOfId.try_emplace(flare.id, flares.size());
            if (isNew)
                flares.emplace_back();
            std::vector<Sighting>& sightings = flares[entry->second];
            const Vertex position = vertexFrom(origin, flare.pos);
            if (!sightings.empty() && sightings.back().sample == sample)
                sightings.back().position = position;
            else
                sightings.push_back({sample, position});
        }
        ++sample;
    }
    return flares;
}
} // namespace

FlarePaths flarePaths(const QMap<double, keyframe>& keyframes, const Vertex& origin) {
    FlarePaths paths;
    for (const std::vector<Sighting>& sightings : sightingsById(keyframes, origin)) {
        if (sightings.size() < 2)
            continue;
        paths.strips.push_back({paths.vertices.size(), sightings.size()});
        for (const Sighting& sighting : sightings) {
            paths.vertices.push_back(sighting.position);
            paths.samples.push_back(static_cast<std::uint32_t>(sighting.sample));
        }
    }
    return paths;
}

FlareTrails::FlareTrails(const QMap<double, keyframe>& keyframes, const Vertex& origin) {
    FlarePaths paths = flarePaths(keyframes, origin);
    samples_ = std::move(paths.samples);
    strips_ = std::move(paths.strips);
    chunks_.reserve(strips_.size());
    const double tolerance = coarseTolerance(boxOf(paths.vertices));
    for (const FlarePaths::Strip& strip : strips_)
        chunks_.emplace_back(paths.vertices, strip.first, strip.count, tolerance);
    buffer_.assign(std::move(paths.vertices));
}

void FlareTrails::draw(std::size_t sampleCount, const LineSight* lineSight) {
    runs_.clear();
    for (std::size_t i = 0; i < strips_.size(); ++i) {
        const FlarePaths::Strip& strip = strips_[i];
        const auto begin = samples_.begin() + static_cast<std::ptrdiff_t>(strip.first);
        const auto end = begin + static_cast<std::ptrdiff_t>(strip.count);
        const auto count = std::lower_bound(begin, end, sampleCount) - begin;
        chunks_[i].addRuns(static_cast<std::size_t>(count), lineSight, runs_);
    }
    buffer_.drawRuns(GL_LINE_STRIP, runs_.firsts, runs_.counts);
}
} // namespace sorvane
