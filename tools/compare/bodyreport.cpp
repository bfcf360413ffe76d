// Writes how the signatures of two bodies differ.
#include <cmath>
#include <iomanip>
#include <sstream>

#include <nlohmann/json.hpp>

#include "bodycomparison.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
using Json = nlohmann::ordered_json;

// The digits of single precision, in which the radiances are.
double written(double value) {
    return shortestDouble(static_cast<float>(value));
}

std::string decibelText(double value) {
    if (std::isinf(value))
        return value > 0.0 ? "inf" : "-inf";
    constexpr double kLeastShown = 0.005;
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << (std::abs(value) < kLeastShown ? 0.0 : value); // never -0.00
    return text.str();
}

double intensityAt(const SignatureMap& map, std::size_t number) {
    return map.points[number].intensity.total();
}

std::string directionText(const SignatureGrid& grid, std::size_t number) {
    return "azimuth " + shortestText(grid.azimuth(number % grid.azimuthCount())) + ", elevation " +
           shortestText(grid.elevation(number / grid.azimuthCount()));
}

// Infinite ones are null.
Json jsonOf(double decibels) {
    return std::isfinite(decibels) ? Json(written(decibels)) : Json();
}
} // namespace

void writeText(std::ostream& out, const BodyComparison& comparison) {
    const SignatureComparison& differences = comparison.differences;
    const SignatureGrid& grid = differences.grid;
    constexpr int kNameWidth = 12;
    constexpr int kNumberWidth = 14;
    out << std::left << std::setw(kNameWidth) << "W/sr" << std::right << std::setw(kNumberWidth) << "A"
        << std::setw(kNumberWidth) << "B" << std::setw(kNumberWidth) << "B/A dB" << '\n';
    const auto line = [&](const char* name, double a, double b) {
        out << std::left << std::setw(kNameWidth) << name << std::right << std::setprecision(4)
            << std::setw(kNumberWidth) << a << std::setw(kNumberWidth) << b << std::setw(kNumberWidth)
            << decibelText(decibels(a, b)) << '\n';
    };
    const auto lineAt = [&](const char* name, std::size_t number) {
        line(name, intensityAt(comparison.mapA, number), intensityAt(comparison.mapB, number));
    };
    const std::size_t nose = grid.level() * grid.azimuthCount();
    const std::size_t quarter = grid.azimuthCount() / 4;
    line("mean", comparison.mapA.mean().intensity.total(), comparison.mapB.mean().intensity.total());
    lineAt("nose", nose);
    lineAt("right", nose + quarter);
    lineAt("tail", nose + 2 * quarter);
    lineAt("left", nose + 3 * quarter);
    lineAt("above", grid.size() - 1);
    lineAt("below", 0);
    lineAt("greatest", differences.greatest);
    if (differences.onlyInA > 0)
        out << "only A radiates in " << differences.onlyInA << " directions\n";
    if (differences.onlyInB > 0)
        out << "only B radiates in " << differences.onlyInB << " directions\n";
    out << (differences.agrees(comparison.toleranceDecibels) ? "equal: " : "different: ") << grid.size()
        << " directions compared, ";
    if (differences.rootMeanSquare)
        out << "root mean square " << decibelText(*differences.rootMeanSquare) << " dB, ";
    out << "the most " << decibelText(differences.greatestDifference()) << " dB at "
        << directionText(grid, differences.greatest) << '\n';
}

void writeJson(std::ostream& out, const BodyComparison& comparison) {
    constexpr int kIndentation = 2;
    const SignatureComparison& differences = comparison.differences;
    const SignatureGrid& grid = differences.grid;
    const std::size_t greatest = differences.greatest;
    Json all{
        {"kind", "bodies"},
        {"a", comparison.a},
        {"b", comparison.b},
        {"equal", differences.agrees(comparison.toleranceDecibels)},
        {"tolerance", comparison.toleranceDecibels},
        {"step_deg", grid.step()},
        {"mean_dB", jsonOf(differences.ofMeans)},
        {"root_mean_square_dB", differences.rootMeanSquare ? jsonOf(*differences.rootMeanSquare) : Json()},
        {"only_in_a", differences.onlyInA},
        {"only_in_b", differences.onlyInB},
        {"greatest",
         {{"azimuth_deg", grid.azimuth(greatest % grid.azimuthCount())},
          {"elevation_deg", grid.elevation(greatest / grid.azimuthCount())},
          {"a_W_per_sr", written(intensityAt(comparison.mapA, greatest))},
          {"b_W_per_sr", written(intensityAt(comparison.mapB, greatest))},
          {"difference_dB", jsonOf(differences.greatestDifference())}}}};
    Json& rows = all["difference_dB"] = Json::array();
    for (std::size_t row = 0; row < grid.elevationCount(); ++row) {
        Json& values = rows.emplace_back(Json::array());
        for (std::size_t i = 0; i < grid.azimuthCount(); ++i)
            values.push_back(jsonOf(differences.differences[row * grid.azimuthCount() + i]));
    }
    out << all.dump(kIndentation, ' ', false, Json::error_handler_t::replace) << '\n';
}

void writeCsv(std::ostream& out, const BodyComparison& comparison) {
    const SignatureGrid& grid = comparison.differences.grid;
    out << "azimuth_deg,elevation_deg,a_W_per_sr,b_W_per_sr,difference_dB\n";
    for (std::size_t i = 0; i < grid.size(); ++i)
        out << shortestText(grid.azimuth(i % grid.azimuthCount())) << ','
            << shortestText(grid.elevation(i / grid.azimuthCount())) << ','
            << shortestText(written(intensityAt(comparison.mapA, i))) << ','
            << shortestText(written(intensityAt(comparison.mapB, i))) << ','
            << shortestText(written(comparison.differences.differences[i])) << '\n';
}
} // namespace sorvane
