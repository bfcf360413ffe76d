// Writes what a comparison found, for people or as JSON.
#include "comparisonreport.h"

#include <algorithm>

#include <nlohmann/json.hpp>

#include "picturesize.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
using Json = nlohmann::ordered_json;

// The first of the times that only one trajectory has.
std::vector<double> firstOf(const std::vector<double>& times, std::size_t count) {
    return {times.begin(), times.begin() + static_cast<std::ptrdiff_t>(std::min(count, times.size()))};
}

void writeLonelyTimes(
    std::ostream& out, const std::string& owner, const std::vector<double>& times, std::size_t listed) {
    for (const double time : firstOf(times, listed))
        out << "only in " << owner << ": " << shortestText(time) << " s\n";
    if (times.size() > listed)
        out << "only in " << owner << ": " << times.size() - listed << " more\n";
}

Json jsonOf(const SampleDifference& difference) {
    return {{"time_s", difference.time}, {"field", difference.field}, {"a", difference.a}, {"b", difference.b}};
}

void writePretty(std::ostream& out, const Json& json) {
    // Names of files may hold bytes that are no UTF-8.
    out << json.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}
} // namespace

void writeText(std::ostream& out, const PictureReport& report) {
    const PictureComparison& comparison = report.comparison;
    if (!comparison.isSameSize()) {
        out << "different sizes: " << report.a << " has " << sizeText(comparison.sizeA) << ", " << report.b << " has "
            << sizeText(comparison.sizeB) << '\n';
        return;
    }
    out << (comparison.agrees(report.allowed) ? "equal: " : "different: ") << comparison.differing << " of "
        << qint64{comparison.sizeA.width()} * comparison.sizeA.height() << " pixels differ by more than "
        << report.tolerance << ", the most by " << comparison.largest << '\n';
}

void writeJson(std::ostream& out, const PictureReport& report) {
    const PictureComparison& comparison = report.comparison;
    Json json = {
        {"kind", "pictures"},
        {"a", report.a},
        {"b", report.b},
        {"equal", comparison.agrees(report.allowed)},
        {"tolerance", report.tolerance},
        {"allowed_share", report.allowed},
        {"size_a", sizeText(comparison.sizeA)},
        {"size_b", sizeText(comparison.sizeB)},
    };
    if (comparison.isSameSize()) {
        json["differing_pixels"] = comparison.differing;
        json["differing_share"] = comparison.differingShare();
        json["largest_difference"] = comparison.largest;
    }
    writePretty(out, json);
}

void writeText(std::ostream& out, const TrajectoryReport& report) {
    const TrajectoryComparison& comparison = report.comparison;
    for (const HeaderDifference& difference : comparison.header)
        out << "header " << difference.field << ": " << difference.a << " | " << difference.b << '\n';
    writeLonelyTimes(out, report.a, comparison.onlyInA, report.listed);
    writeLonelyTimes(out, report.b, comparison.onlyInB, report.listed);
    for (const SampleDifference& difference : report.differences)
        out << shortestText(difference.time) << " s " << difference.field << ": " << shortestText(difference.a) << " | "
            << shortestText(difference.b) << '\n';
    if (report.found > report.differences.size())
        out << report.found - report.differences.size() << " more differences\n";
    for (const FieldSummary& field : comparison.fields)
        out << "summary " << field.field << ": " << field.samples << " samples differ, the most by "
            << shortestText(field.largest.size()) << " at " << shortestText(field.largest.time) << " s\n";
    out << (comparison.agrees() ? "equal: " : "different: ") << comparison.compared << " samples compared\n";
}

void writeJson(std::ostream& out, const TrajectoryReport& report) {
    const TrajectoryComparison& comparison = report.comparison;
    Json header = Json::array();
    for (const HeaderDifference& difference : comparison.header)
        header.push_back({{"field", difference.field}, {"a", difference.a}, {"b", difference.b}});
    Json fields = Json::array();
    for (const FieldSummary& field : comparison.fields)
        fields.push_back({
            {"field", field.field},
            {"samples", field.samples},
            {"largest_difference", field.largest.size()},
            {"time_s", field.largest.time},
        });
    Json differences = Json::array();
    for (const SampleDifference& difference : report.differences)
        differences.push_back(jsonOf(difference));
    writePretty(
        out, {
                 {"kind", "trajectories"},
                 {"a", report.a},
                 {"b", report.b},
                 {"equal", comparison.agrees()},
                 {"tolerance", report.tolerance},
                 {"compared_samples", comparison.compared},
                 {"header", header},
                 {"times_only_in_a", comparison.onlyInA.size()},
                 {"times_only_in_b", comparison.onlyInB.size()},
                 {"only_in_a_s", firstOf(comparison.onlyInA, report.listed)},
                 {"only_in_b_s", firstOf(comparison.onlyInB, report.listed)},
                 {"fields", fields},
                 {"found_differences", report.found},
                 {"differences", differences},
             });
}
} // namespace sorvane
