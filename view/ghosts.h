// Engagements that are seen beside the one that is followed: thin translucent paths, and points for the bodies.
#pragma once

#include <array>
#include <map>
#include <unordered_map>
#include <vector>

#include "engagementid.h"
#include "framedepth.h"
#include "keptseries.h"
#include "vertexbuffer.h"

namespace sorvane {
class LookAt;

// How an engagement looks as a ghost.
struct Ghost {
    std::size_t colour = 0; // of the set's colours
    double later = 0.0;     // seconds that its bodies are ahead of the clock
};

// Who is a ghost. A set stays as it is.
struct GhostSet {
    std::vector<std::array<float, 3>> colours; // red, green and blue from 0 to 1
    std::unordered_map<EngagementId, Ghost> ghosts;

    bool contains(EngagementId id) const { return ghosts.contains(id); }
};

// The paths of all lie in one vertex buffer, each with its points from the first sample to the last. What is seen of an
// engagement is kept from its first frame on, so that its samples stay packed. Drawing needs a current GL context, and
// so does the destructor once something has been drawn.
class Ghosts {
public:
    // An engagement to draw, which is in the set; not owned.
    struct Shown {
        EngagementId id{};
        const KeptSeries* samples = nullptr;
    };
    struct Options {
        double time = 0.0; // seconds, the clock's
        double pixelRatio = 1.0;
    };

    void draw(
        const std::vector<Shown>& shown, const GhostSet& set, const LookAt& lookAt, const DepthSlice& slice,
        const Options& options);

    // Lets go of what is kept for an engagement whose samples are others from now on, or that is drawn no more.
    void forget(EngagementId id);

private:
    // The bodies of one engagement at its samples.
    struct Track {
        explicit Track(const SampleSeries& series);

        Triple place(std::size_t sample, bool isThreat) const; // world
        // Between samples; before the first one and after the last one theirs. Needs at least one.
        Triple placeAt(double time, bool isThreat) const;

        Triple origin{}; // world, from which the vertices count
        std::vector<double> times;
        std::vector<Vertex> target;
        std::vector<Vertex> threat;
    };

    void build(const std::vector<Shown>& shown);
    void drawPaths(const GhostSet& set, const Options& options);
    void drawBodies(
        const std::vector<Shown>& shown, const GhostSet& set, const LookAt& lookAt, const DepthSlice& slice,
        const Options& options) const;

    std::map<EngagementId, Track> tracks_;
    std::vector<EngagementId> built_; // in the order of their paths in the buffer: target and threat of each
    std::vector<int> firsts_;
    std::vector<int> counts_;
    Vertex origin_{};
    VertexBuffer buffer_;
};
} // namespace sorvane
