// An engagement put on the Earth and into a day: what the map formats are written from.
#pragma once

#include <array>
#include <span>
#include <string>

#include "flareburns.h"
#include "geodetic.h"
#include "measuredengagement.h"
#include "worldtime.h"

namespace sorvane {
struct PlacedEngagement {
    std::string name;
    const MeasuredEngagement& flight;
    LocalFrame frame;
    WorldTime epoch = 0; // of the trajectory's time 0; all samples lie in the years 1 to 9999

    std::span<const Sample> samples() const { return flight.samples(); }
    WorldTime timeOf(double seconds) const { return worldTimeAfter(epoch, seconds).value_or(epoch); }
    WorldTime timeOn(std::size_t sample) const { return timeOf(samples()[sample].time); }
};

// Calls take(sample, position) for each sample on which the body is on the map.
template <class Take> void forEachPlace(const PlacedEngagement& engagement, Triple Sample::*body, Take take) {
    for (const Sample& sample : engagement.samples())
        if (const GeodeticPosition position = engagement.frame.positionOf(sample.*body); isOnMap(position))
            take(sample, position);
}

// Calls take(seconds, position) for each row of a burn that is on the map, and once more where the flare is out: until
// then it stays where it was last.
template <class Take> void forEachPlace(const PlacedEngagement& engagement, const FlareBurn& burn, Take take) {
    const MeasuredEngagement& flight = engagement.flight;
    GeodeticPosition position;
    for (const FlareTracks::Number row : burn.rows) {
        position = engagement.frame.positionOf(flight.flares().positions[row]);
        if (isOnMap(position))
            take(flight.samples()[flight.tracks().sampleOf(row)].time, position);
    }
    if (burn.outSample != flight.tracks().sampleOf(burn.rows.back()) && isOnMap(position))
        take(flight.samples()[burn.outSample].time, position);
}

struct MapColour {
    int red = 0;
    int green = 0;
    int blue = 0;
};

// One of the two bodies, and how the maps show it.
struct MapBody {
    const char* id = "";
    const char* name = "";
    Triple Sample::*position = nullptr;
    Triple Sample::*attitude = nullptr;
    MapColour colour; // as the viewer draws its path
};

inline constexpr std::array<MapBody, 2> kMapBodies = {
    MapBody{"target", "Target", &Sample::targetPosition, &Sample::targetAttitude, {0, 255, 0}},
    MapBody{"threat", "Threat", &Sample::threatPosition, &Sample::threatAttitude, {255, 255, 0}},
};
inline constexpr MapColour kFlareColour = {204, 26, 26}; // as the viewer draws their trails
} // namespace sorvane
