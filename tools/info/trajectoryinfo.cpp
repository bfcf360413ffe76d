// Describes a trajectory: what its header says, which files the viewer takes, and the encounter in numbers.
#include "trajectoryinfo.h"

#include <cmath>

#include <QFile>

#include "encounter.h"
#include "engagementfiles.h"
#include "flaregrey.h"
#include "measure.h"
#include "openingproblem.h"
#include "shortestnumber.h"
#include "trajectoryfile.h"
#include "trajectoryheaderfields.h"
#include "trajectorysummary.h"
#include "withoutnoise.h"

namespace sorvane {
namespace {
struct ToRecord {
    InfoRecord operator()(const QString& text) const { return text.toStdString(); }
    InfoRecord operator()(const float (&triple)[3]) const { return numberList(triple); }
    InfoRecord operator()(int number) const { return number; }
    InfoRecord operator()(float number) const { return shortestDouble(number); }
};

InfoRecord headerRecord(const TrajectoryFileHeader& header) {
    InfoRecord record;
    for (const sorvane::TrajectoryHeaderField& field : sorvane::kTrajectoryHeaderFields)
        record[field.name] = std::visit([&](auto member) { return ToRecord()(header.*member); }, field.member);
    return record;
}

// A file that the engagement goes by, and what the viewer takes in its place.
InfoRecord fileRecord(const char* role, const QString& path, const QString& taken) {
    InfoRecord record{{"role", role}, {"path", path.toStdString()}, {"exists", QFile::exists(path)}};
    const bool isReplaced = path != taken;
    record["fallback"] = isReplaced ? InfoRecord(taken.toStdString()) : InfoRecord();
    record["fallback_exists"] = isReplaced ? InfoRecord(QFile::exists(taken)) : InfoRecord();
    return record;
}

InfoRecord filesRecord(const EngagementFiles& named, const EngagementFiles& taken) {
    // No line of the trajectory names the threat's files: they follow from its identifier and the band.
    return InfoRecord::array({
        fileRecord("terrain topography", named.terrainTopoPath, taken.terrainTopoPath),
        fileRecord("terrain radiance", named.terrainRadPath, taken.terrainRadPath),
        fileRecord("target geometry", named.targetGeometryPath(), taken.targetGeometryPath()),
        fileRecord("target reflectance", named.targetBrdfPath, taken.targetBrdfPath),
        fileRecord("target radiance", named.targetRadiancePath(), taken.targetRadiancePath()),
        fileRecord("atmosphere", named.atmospherePath(), taken.atmospherePath()),
        fileRecord("threat geometry", taken.threatGeometryPath(), taken.threatGeometryPath()),
        fileRecord("threat reflectance", taken.threatBrdfPath(), taken.threatBrdfPath()),
        fileRecord("threat radiance", taken.threatRadiancePath(), taken.threatRadiancePath()),
    });
}

const char* choiceOf(bool isStock) {
    return isStock ? "stock" : "named";
}

InfoRecord timeRecord(std::span<const Sample> samples, const TrajectorySummary& summary) {
    InfoRecord record{{"first_s", samples.front().time}, {"last_s", samples.back().time}};
    if (summary.steps) {
        record["step_minimum_s"] = summary.steps->minimum;
        record["step_median_s"] = summary.steps->median;
        record["step_maximum_s"] = summary.steps->maximum;
    }
    return record;
}

InfoRecord flareRecord(const FlareSummary& flares, const BrightestFlares& greys) {
    InfoRecord record{{"distinct", flares.distinct}, {"most_at_once", flares.mostAtOnce}, {"samples", flares.samples}};
    if (flares.samples > 0) {
        record["first_s"] = flares.firstTime;
        record["last_s"] = flares.lastTime;
        record["greys"] = InfoRecord::array();
        for (const auto& [id, flare] : greys.byId())
            record["greys"].push_back({{"flare", id}, {"grey", flare.grey}});
    }
    return record;
}

InfoRecord extentRecord(const PositionExtent& extent, LengthUnit unit) {
    return {
        {lengthName("minimum", unit), numberList(extent.minimum)},
        {lengthName("maximum", unit), numberList(extent.maximum)},
    };
}

InfoRecord encounterRecord(std::span<const Sample> samples, std::size_t index, LengthUnit unit) {
    const Encounter encounter = writtenEncounterOn(samples, index);
    return {
        {"time_s", samples[index].time},
        {lengthName("range", unit), encounter.range},
        {speedName("closing_speed", unit), encounter.closingSpeed},
        {"aspect_deg", encounter.aspectDegrees},
    };
}

InfoRecord closestRecord(const ClosestApproach& closest, LengthUnit unit) {
    return {{"time_s", closest.time}, {lengthName("range", unit), closest.range}};
}

InfoRecord valueRecord(const Measure& measure, double value) {
    if (std::isnan(value))
        return {};
    if (measure.unit == MeasureUnit::Truth)
        return value != 0.0;
    return writtenValue(value);
}

// What the engagement has one of, and what each flare has.
InfoRecord measuresRecord(const MeasuredEngagement& engagement, const EngagementResults& results) {
    InfoRecord record;
    InfoRecord flares = InfoRecord::array();
    for (std::size_t track = 0; track < engagement.tracks().size(); ++track)
        flares.push_back({{"flare", engagement.tracks().id(track)}});
    for (const Measure& measure : allMeasures()) {
        if (measure.needsRadiometry())
            continue;
        const std::string name = columnName(measure, engagement.unit()).toStdString();
        if (measure.isOfEngagement())
            record[name] = valueRecord(measure, valueOf(results, measure));
        if (measure.isOfFlares())
            for (std::size_t track = 0; track < flares.size(); ++track)
                flares[track][name] = valueRecord(measure, flareValueOf(results, measure, track));
    }
    record["flares"] = std::move(flares);
    return record;
}

void describeSamples(
    const MeasuredEngagement& engagement, const BrightestFlares& greys, LengthUnit unit, InfoRecord& record) {
    const SampleSeries& series = engagement.series();
    const TrajectorySummary summary = summaryOf(series);
    const std::span<const Sample> samples = series.samples();
    record["time"] = timeRecord(samples, summary);
    record["flares"] = flareRecord(summary.flares, greys);
    record["target_extent"] = extentRecord(summary.target, unit);
    record["threat_extent"] = extentRecord(summary.threat, unit);
    record["start"] = encounterRecord(samples, 0, unit);
    record["end"] = encounterRecord(samples, samples.size() - 1, unit);
    const EngagementResults results = resultsOf(engagement);
    if (!std::isnan(results.closest.range))
        record["closest_approach"] = closestRecord(results.closest, unit);
    record["measures"] = measuresRecord(engagement, results);
}
} // namespace

std::optional<Problem> describeTrajectory(const std::string& path, LengthUnit unit, InfoRecord& record) {
    const TrajectoryInput input = openTrajectoryAt(path);
    if (path != "-")
        record["is_compressed"] = input.isProcess;
    if (input.device == nullptr)
        return input.isProcess ? "the program uncompress can't be started" : "can't be opened";
    if (std::optional<Problem> problem = problemOfInput(input, path))
        return problem;
    const TrajectoryFileHeader header = readTrajectoryHeader(input.device.get(), input.isProcess);
    if (header.terrainTopoPath.isNull())
        return input.isProcess ? "can't be decompressed, or is empty" : "is empty";
    SampleSeries series;
    BrightestFlares greys;
    const auto addSample = [&](const Sample& sample, const std::vector<Flare>& flares) {
        series.add(sample, flares);
        greys.include(flares);
    };
    const bool isLastWhole = readEachRecord(input.device.get(), input.isProcess, addSample).isWhole;
    series.putInOrder();
    const EngagementFiles files = chooseFiles(header);
    record["header"] = headerRecord(header);
    record["terrain"] = choiceOf(files.isStockTerrain);
    record["target"] = choiceOf(files.isStockTarget);
    record["band"] = files.band.toStdString();
    record["files"] = filesRecord(namedFiles(header), files);
    record["samples"] = series.samples().size();
    if (series.isEmpty())
        return "holds no samples";
    describeSamples(MeasuredEngagement(series, header.fieldOfView, unit), greys, unit, record);
    if (!input.cameWhole())
        return "its compressed data are damaged or cut short";
    return isLastWhole ? std::nullopt : std::optional<Problem>("the data end within the last record");
}
} // namespace sorvane
