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

WorldTime timeOf(const PlacedEngagement& engagement, double seconds) {
    return worldTimeAfter(engagement.epoch, seconds).value_or(engagement.epoch);
}

std::string intervalOf(const PlacedEngagement& engagement) {
    return worldTimeText(timeOf(engagement, engagement.samples.front().time)) + '/' +
           worldTimeText(timeOf(engagement, engagement.samples.back().time));
}

Json documentPacket(const PlacedEngagement& engagement) {
    return {
        {"id", "document"},
        {"name", engagement.name},
        {"version", "1.0"},
        {"clock",
         {{"interval", intervalOf(engagement)},
          {"currentTime", worldTimeText(timeOf(engagement, engagement.samples.front().time))},
          {"multiplier", 1},
          {"range", "CLAMPED"},
          {"step", "SYSTEM_CLOCK_MULTIPLIER"}}},
    };
}

Json::array_t sampledPositions(const PlacedEngagement& engagement, const MapBody& body) {
    Json::array_t numbers;
    numbers.reserve(4 * static_cast<std::size_t>(engagement.samples.size()));
    for (const Sample& sample : engagement.samples) {
        const GeodeticPosition position = engagement.frame.positionOf(sample.*body.position);
        numbers.emplace_back(sample.time);
        numbers.emplace_back(rounded(position.longitudeDegrees, 1e9));
        numbers.emplace_back(rounded(position.latitudeDegrees, 1e9));
        numbers.emplace_back(rounded(position.height, 1e4));
    }
    return numbers;
}

Json bodyPacket(const PlacedEngagement& engagement, const MapBody& body) {
    const Json colour = {{"rgba", {body.colour.red, body.colour.green, body.colour.blue, 255}}};
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
    packet["position"]["cartographicDegrees"] = sampledPositions(engagement, body);
    return packet;
}
} // namespace

void writeCzml(std::ostream& out, const PlacedEngagement& engagement) {
    out << "[\n" << documentPacket(engagement);
    for (const MapBody& body : kMapBodies)
        out << ",\n" << bodyPacket(engagement, body);
    out << "\n]\n";
}
} // namespace sorvane
