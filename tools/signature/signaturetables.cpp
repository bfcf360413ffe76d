// Writes signatures: for people, as CSV and as JSON.
#include "signaturetables.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iomanip>
#include <numbers>
#include <sstream>

#include <nlohmann/json.hpp>

#include "csvtext.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
using Json = nlohmann::ordered_json;

constexpr int kLayoutVersion = 1;
constexpr int kIndentation = 2;
constexpr int kNameWidth = 22;
constexpr int kNumberWidth = 12;

struct Column {
    const char* name; // in tables
    double (*of)(const SignaturePoint&);
};
constexpr Column kColumns[] = {
    {"intensity_W_per_sr",
     [](const SignaturePoint& p) {
         return p.intensity.total();
     }},
    {"own_W_per_sr",
     [](const SignaturePoint& p) {
         return p.intensity.own;
     }},
    {"sun_W_per_sr",
     [](const SignaturePoint& p) {
         return p.intensity.sun;
     }},
    {"sky_and_earth_W_per_sr",
     [](const SignaturePoint& p) {
         return p.intensity.skyAndEarth;
     }},
    {"other_facets_W_per_sr",
     [](const SignaturePoint& p) {
         return p.intensity.otherFacets;
     }},
    {"projected_area_m2",
     [](const SignaturePoint& p) {
         return p.projectedArea;
     }},
};

// Six digits: the radiances are in single precision, and sums of them have no more.
double written(double value) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.begin(), text.end(), value, std::chars_format::general, 6).ptr;
    std::from_chars(text.begin(), end, value);
    return value;
}

// Like written, with four digits.
std::string shortText(double value) {
    std::ostringstream text;
    text << std::setprecision(4) << value;
    return text.str();
}

Json partsOf(const SignaturePoint& point) {
    Json parts = Json::object();
    for (const Column& column : kColumns)
        parts[column.name] = written(column.of(point));
    return parts;
}

Json directionOfPoint(const SignatureMap& map, std::size_t number) {
    const std::size_t columns = map.grid.azimuthCount();
    return {
        {"azimuth_deg", map.grid.azimuth(number % columns)}, {"elevation_deg", map.grid.elevation(number / columns)}};
}

// Null in the dark.
Json sunOf(const SignatureLight& light) {
    if (light.toSun == Vec3d())
        return nullptr;
    constexpr double kDegrees = 180.0 / std::numbers::pi;
    const double azimuth = std::atan2(-light.toSun.y, light.toSun.x) * kDegrees;
    return {
        {"azimuth_deg", written(azimuth < 0.0 ? azimuth + 360.0 : azimuth)},
        {"elevation_deg", written(std::asin(std::clamp(light.toSun.z, -1.0, 1.0)) * kDegrees)}};
}

Json recordOf(const NamedSignature& signature) {
    const SignatureMap& map = signature.map;
    Json record{{"body", signature.name},
                {"facets", signature.facets},
                {"time_s", written(signature.time)},
                {"sun", sunOf(signature.light)},
                {"mean", partsOf(map.mean())},
                {"brightest", directionOfPoint(map, map.brightest())}};
    record["brightest"].update(partsOf(map.points[map.brightest()]));
    for (const Column& column : kColumns) {
        Json& rows = record[column.name] = Json::array();
        for (std::size_t row = 0; row < map.grid.elevationCount(); ++row) {
            Json& values = rows.emplace_back(Json::array());
            for (std::size_t i = 0; i < map.grid.azimuthCount(); ++i)
                values.push_back(written(column.of(map.at(row, i))));
        }
    }
    return record;
}

void writeLine(std::ostream& out, const std::string& name, const SignaturePoint& point) {
    out << "  " << std::left << std::setw(kNameWidth) << name << std::right;
    for (const Column& column : kColumns)
        out << std::setw(kNumberWidth) << shortText(column.of(point));
    out << '\n';
}
} // namespace

void writeSummary(std::ostream& out, const std::vector<NamedSignature>& signatures) {
    for (const NamedSignature& signature : signatures) {
        const SignatureMap& map = signature.map;
        const SignatureGrid& grid = map.grid;
        out << signature.name << ": " << signature.facets << " facets, " << grid.azimuthCount() << " x "
            << grid.elevationCount() << " directions";
        if (std::isfinite(grid.range()))
            out << " from " << shortestText(grid.range()) << " units";
        out << '\n' << "  " << std::left << std::setw(kNameWidth) << "W/sr; area in m2" << std::right;
        for (const char* const heading : {"total", "own", "sun", "sky+earth", "facets", "area"})
            out << std::setw(kNumberWidth) << heading;
        out << '\n';
        writeLine(out, "mean", map.mean());
        const std::size_t quarter = grid.azimuthCount() / 4;
        writeLine(out, "nose", map.at(grid.level(), 0));
        writeLine(out, "right", map.at(grid.level(), quarter));
        writeLine(out, "tail", map.at(grid.level(), 2 * quarter));
        writeLine(out, "left", map.at(grid.level(), 3 * quarter));
        writeLine(out, "above", map.at(grid.elevationCount() - 1, 0));
        writeLine(out, "below", map.at(0, 0));
        const std::size_t brightest = map.brightest();
        writeLine(
            out,
            "greatest, " + shortText(grid.azimuth(brightest % grid.azimuthCount())) + " / " +
                shortText(grid.elevation(brightest / grid.azimuthCount())),
            map.points[brightest]);
    }
}

void writeCsv(std::ostream& out, const std::vector<NamedSignature>& signatures) {
    out << "body,azimuth_deg,elevation_deg";
    for (const Column& column : kColumns)
        out << ',' << column.name;
    out << '\n';
    for (const NamedSignature& signature : signatures) {
        const SignatureGrid& grid = signature.map.grid;
        for (std::size_t row = 0; row < grid.elevationCount(); ++row)
            for (std::size_t i = 0; i < grid.azimuthCount(); ++i) {
                out << csvText(signature.name) << ',' << shortestText(grid.azimuth(i)) << ','
                    << shortestText(grid.elevation(row));
                for (const Column& column : kColumns)
                    out << ',' << shortestText(written(column.of(signature.map.at(row, i))));
                out << '\n';
            }
    }
}

void writeJson(std::ostream& out, const std::vector<NamedSignature>& signatures) {
    Json all{{"layout", kLayoutVersion}};
    if (!signatures.empty()) {
        const SignatureGrid& grid = signatures.front().map.grid;
        all["step_deg"] = grid.step();
        if (std::isfinite(grid.range()))
            all["range_units"] = grid.range();
        for (std::size_t i = 0; i < grid.azimuthCount(); ++i)
            all["azimuth_deg"].push_back(grid.azimuth(i));
        for (std::size_t row = 0; row < grid.elevationCount(); ++row)
            all["elevation_deg"].push_back(grid.elevation(row));
    }
    all["bodies"] = Json::array();
    for (const NamedSignature& signature : signatures)
        all["bodies"].push_back(recordOf(signature));
    out << all.dump(kIndentation, ' ', false, Json::error_handler_t::replace) << '\n';
}
} // namespace sorvane
