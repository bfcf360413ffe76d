// The paths that the flares of one engagement have left behind.
#include "flaretrails.h"

#include <algorithm>
#include <span>
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
    const std::vector<std::vector<Sighting>> flares = sightingsById(keyframes, origin);
    std::size_t count = 0;
    for (const std::vector<Sighting>& sightings : flares)
        count += sightings.size();
    paths.vertices.reserve(count + count / 8); // for coarse lines, too
    paths.samples.reserve(count);
    for (const std::vector<Sighting>& sightings : flares) {
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
    trails_.reserve(paths.strips.size());
    const double tolerance = coarseTolerance(boxOf(paths.vertices));
    for (const auto& [first, count] : paths.strips) {
        const auto samples = std::span(paths.samples).subspan(first, count);
        const bool areAll = samples.back() - samples.front() + 1 == count;
        trails_.push_back(
            {count,
             samples.front(),
             areAll ? std::vector<std::uint32_t>() : std::vector(samples.begin(), samples.end()),
             {paths.vertices, first, count, tolerance}});
    }
    buffer_.assign(std::move(paths.vertices));
}

std::size_t FlareTrails::Trail::countAt(std::size_t sampleCount) const {
    if (!samples.empty())
        return static_cast<std::size_t>(std::ranges::lower_bound(samples, sampleCount) - samples.begin());
    return sampleCount > firstSample ? std::min(sampleCount - firstSample, count) : 0;
}

void FlareTrails::draw(std::size_t sampleCount, const LineSight* lineSight) {
    runs_.clear();
    for (const Trail& trail : trails_)
        trail.chunks.addRuns(trail.countAt(sampleCount), lineSight, runs_);
    buffer_.drawRuns(GL_LINE_STRIP, runs_.firsts, runs_.counts);
}
} // namespace sorvane
