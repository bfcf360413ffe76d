// Writes the samples of a trajectory as comma-separated values.
#include "samplecsv.h"

#include <string>

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
    return line + speedNameEnding(unit).toStdString() + ",aspect_deg\n";
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
    text += '\n';
}
} // namespace

void writeSampleCsv(std::ostream& out, std::span<const Sample> samples, LengthUnit unit) {
    out << namesLine(unit);
    std::string text;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        appendSample(text, samples[i], writtenEncounterOn(samples, i));
        if (text.size() >= kPieceBytes) {
            out << text;
            text.clear();
        }
    }
    out << text;
}
} // namespace sorvane
