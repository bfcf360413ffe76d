// When the flares of a trajectory burn.
#include "flareburns.h"

#include <algorithm>

namespace sorvane {
std::vector<FlareBurn> burnsOf(const MeasuredEngagement& engagement, std::size_t track) {
    const FlareTracks& tracks = engagement.tracks();
    const std::span<const FlareTracks::Number> rows = tracks.rows(track);
    std::vector<FlareBurn> burns;
    for (std::size_t first = 0, end = 0; first < rows.size(); first = end) {
        for (end = first + 1; end < rows.size() && tracks.next(rows[end - 1]) == rows[end];)
            ++end;
        const std::size_t outSample = std::min(tracks.sampleOf(rows[end - 1]) + 1, engagement.samples().size() - 1);
        burns.push_back({rows.subspan(first, end - first), tracks.sampleOf(rows[first]), outSample});
    }
    return burns;
}

std::string flareName(const MeasuredEngagement& engagement, std::size_t track) {
    return "Flare " + std::to_string(engagement.tracks().id(track));
}
} // namespace sorvane
