// Writes an engagement as CZML.
#include "czmlwriter.h"

#include <cmath>

#include <nlohmann/json.hpp>

namespace sorvane {
namespace {
using Json = nlohmann::ordered_json;

// Rounded, so that the shortest text of the number is no longer than it need be; to about a tenth of a millimetre.
double rounded(double value, double steps) {
    return std::round(value * steps) / steps;
}

std::string intervalOf(WorldTime first, WorldTime last) {
    return worldTimeText(first) + '/' + worldTimeText(last);
}

std::string intervalOf(const PlacedEngagement& engagement) {
    return intervalOf(engagement.timeOn(0), engagement.timeOn(engagement.samples().size() - 1));
}

Json documentPacket(const PlacedEngagement& engagement) {
    return {
        {"id", "document"},
        {"name", engagement.name},
        {"version", "1.0"},
        {"clock",
         {{"interval", intervalOf(engagement)},
          {"currentTime", worldTimeText(engagement.timeOn(0))},
          {"multiplier", 1},
          {"range", "LOOP_STOP"},
          {"step", "SYSTEM_CLOCK_MULTIPLIER"}}},
    };
}

// A property whose samples go evenly from one to the next, which is what CZML takes them to do.
Json sampledProperty(const PlacedEngagement& engagement, const char* name, Json::array_t numbers) {
    return {{"epoch", worldTimeText(engagement.epoch)}, {name, std::move(numbers)}};
}

void addPosition(Json::array_t& numbers, double seconds, const GeodeticPosition& position) {
    numbers.emplace_back(seconds);
    numbers.emplace_back(rounded(position.longitudeDegrees, 1e9));
    numbers.emplace_back(rounded(position.latitudeDegrees, 1e9));
    numbers.emplace_back(rounded(position.height, 1e4));
}

Json::array_t sampledPositions(const PlacedEngagement& engagement, const MapBody& body) {
    Json::array_t numbers;
    numbers.reserve(4 * engagement.samples().size());
    forEachPlace(engagement, body.position, [&](const Sample& sample, const GeodeticPosition& position) {
        addPosition(numbers, sample.time, position);
    });
    return numbers;
}

// From the body's model to the axes of the Earth.
Json::array_t sampledOrientations(const PlacedEngagement& engagement, const MapBody& body) {
    Json::array_t numbers;
    numbers.reserve(5 * engagement.samples().size());
    Quaternion previous{};
    for (const Sample& sample : engagement.samples()) {
        previous = nearerTo(previous, quaternionOf(engagement.frame.turned(modelAxes(sample.*body.attitude))));
        numbers.emplace_back(sample.time);
        for (const double component : previous)
            numbers.emplace_back(rounded(component, 1e10));
    }
    return numbers;
}

Json colourOf(const MapColour& colour) {
    return {{"rgba", {colour.red, colour.green, colour.blue, 255}}};
}

Json labelOf(const std::string& text) {
    return {{"text", text}, {"font", "12px sans-serif"}, {"pixelOffset", {{"cartesian2", {0, -14}}}}};
}

Json bodyPacket(const PlacedEngagement& engagement, const MapBody& body) {
    const Json colour = colourOf(body.colour);
    Json packet = {
        {"id", body.id},
        {"name", body.name},
        {"availability", intervalOf(engagement)},
        {"point", {{"pixelSize", 8}, {"color", colour}}},
        {"path", {{"width", 2}, {"leadTime", 0}, {"material", {{"solidColor", {{"color", colour}}}}}}},
        {"position",
         {{"epoch", worldTimeText(engagement.epoch)},
          {"interpolationAlgorithm", "LINEAR"},
          {"interpolationDegree", 1}}},
    };
    if (Json::array_t numbers = sampledPositions(engagement, body); !numbers.empty())
        packet["position"]["cartographicDegrees"] = std::move(numbers);
    else
        packet.erase("position");
    packet["orientation"] = sampledProperty(engagement, "unitQuaternion", sampledOrientations(engagement, body));
    packet["label"] = labelOf(body.name);
    return packet;
}

// Short: there may be a hundred thousand.
Json flarePacket(const PlacedEngagement& engagement, std::size_t track) {
    const std::string name = flareName(engagement.flight, track);
    Json::array_t intervals;
    Json::array_t numbers;
    for (const FlareBurn& burn : burnsOf(engagement.flight, track)) {
        intervals.emplace_back(intervalOf(engagement.timeOn(burn.firstSample), engagement.timeOn(burn.outSample)));
        forEachPlace(engagement, burn, [&](double seconds, const GeodeticPosition& position) {
            addPosition(numbers, seconds, position);
        });
    }
    Json packet = {
        {"id", "flare-" + std::to_string(engagement.flight.tracks().id(track))},
        {"name", name},
        {"availability", intervals.size() == 1 ? intervals.front() : Json(intervals)},
        {"point", {{"pixelSize", 5}, {"color", colourOf(kFlareColour)}}},
        {"label", labelOf(name)},
    };
    if (!numbers.empty())
        packet["position"] = sampledProperty(engagement, "cartographicDegrees", std::move(numbers));
    return packet;
}
} // namespace

void writeCzml(std::ostream& out, const PlacedEngagement& engagement) {
    out << "[\n" << documentPacket(engagement);
    for (const MapBody& body : kMapBodies)
        out << ",\n" << bodyPacket(engagement, body);
    for (std::size_t track = 0; track < engagement.flight.tracks().size(); ++track)
        out << ",\n" << flarePacket(engagement, track);
    out << "\n]\n";
}
} // namespace sorvane
