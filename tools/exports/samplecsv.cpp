// Writes the samples of a trajectory, or their flares, as comma-separated values.
#include "samplecsv.h"

#include <string>
#include <string_view>
#include <vector>

#include "measurecolumns.h"
#include "shortestnumber.h"
#include "withoutnoise.h"

namespace sorvane {
namespace {
constexpr std::size_t kPieceBytes = std::size_t{1} << 16;

std::string namesLine(LengthUnit unit) {
    const std::string length = lengthNameEnding(unit).toStdString();
    std::string line = "time_s";
    for (const char* const body : {"target", "threat"}) {
        for (const char* const axis : {"_x", "_y", "_z"})
            line.append(",").append(body).append(axis).append(length);
        for (const char* const angle : {"_roll_deg", "_pitch_deg", "_yaw_deg"})
            line.append(",").append(body).append(angle);
    }
    line += ",gyro_roll_deg,gyro_pitch_deg,gyro_yaw_deg,range" + length + ",closing_speed";
    return line + speedNameEnding(unit).toStdString() + ",aspect_deg";
}

void appendTriple(std::string& line, const Triple& values) {
    for (const double value : values) {
        line += ',';
        appendShortest(line, value);
    }
}

void appendSample(std::string& text, const Sample& sample, const Encounter& encounter) {
    appendShortest(text, sample.time);
    appendTriple(text, sample.targetPosition);
    appendTriple(text, sample.targetAttitude);
    appendTriple(text, sample.threatPosition);
    appendTriple(text, sample.threatAttitude);
    appendTriple(text, sample.gyro);
    for (const double value : {encounter.range, encounter.closingSpeed, encounter.aspectDegrees}) {
        text += ',';
        appendShortest(text, value);
    }
}

// What every table of samples has.
bool isAlwaysThere(const Measure& measure) {
    const std::string_view name = measure.name;
    return name == "range" || name == "closing-speed" || name == "aspect";
}

std::vector<MeasureColumn>
columnsOf(const MeasuredEngagement& engagement, std::span<const Measure* const> measures, MeasureColumn::Rows rows) {
    std::vector<MeasureColumn> columns;
    for (const Measure* const measure : measures)
        if (rows == MeasureColumn::Rows::Flares || !isAlwaysThere(*measure))
            columns.emplace_back(engagement, *measure, rows);
    return columns;
}

// A line of names and `count` lines, each begun by `appendRow`, with the columns after it.
template <class AppendRow>
void writeTable(
    std::ostream& out, std::string text, std::span<const MeasureColumn> columns, std::size_t count,
    AppendRow appendRow) {
    for (const MeasureColumn& column : columns)
        text += ',' + column.name();
    text += '\n';
    for (std::size_t row = 0; row < count; ++row) {
        appendRow(text, row);
        for (const MeasureColumn& column : columns) {
            text += ',';
            column.append(text, row);
        }
        text += '\n';
        if (text.size() >= kPieceBytes) {
            out << text;
            text.clear();
        }
    }
    out << text;
}
} // namespace

void writeSampleCsv(std::ostream& out, const MeasuredEngagement& engagement, std::span<const Measure* const> measures) {
    const std::span<const Sample> samples = engagement.samples();
    const std::vector<MeasureColumn> columns = columnsOf(engagement, measures, MeasureColumn::Rows::Samples);
    writeTable(out, namesLine(engagement.unit()), columns, samples.size(), [&](std::string& text, std::size_t i) {
        appendSample(text, samples[i], writtenEncounterOn(samples, i));
    });
}

void writeFlareCsv(std::ostream& out, const MeasuredEngagement& engagement, std::span<const Measure* const> measures) {
    const FlareColumns& flares = engagement.flares();
    const std::string length = lengthNameEnding(engagement.unit()).toStdString();
    std::string names = "time_s,flare";
    for (const char* const axis : {",flare_x", ",flare_y", ",flare_z"})
        names += axis + length;
    const std::vector<MeasureColumn> columns = columnsOf(engagement, measures, MeasureColumn::Rows::Flares);
    writeTable(out, names, columns, flares.size(), [&](std::string& text, std::size_t row) {
        appendShortest(text, engagement.samples()[engagement.tracks().sampleOf(row)].time);
        text += ',' + std::to_string(flares.ids[row]);
        appendTriple(text, flares.positions[row]);
    });
}
} // namespace sorvane
