// Writes the samples of a trajectory as comma-separated values.
#include "samplecsv.h"

#include <iterator>
#include <string>

#include "encounter.h"
#include "shortestnumber.h"

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

void appendTriple(std::string& line, const float (&values)[3]) {
    for (const float value : values) {
        line += ',';
        appendShortest(line, value);
    }
}

void appendSample(std::string& text, const keyframe& sample, const Encounter& encounter) {
    appendShortest(text, sample.time);
    appendTriple(text, sample.targetPos);
    appendTriple(text, sample.targetAtt);
    appendTriple(text, sample.threatPos);
    appendTriple(text, sample.threatAtt);
    appendTriple(text, sample.gyro);
    for (const double value : {encounter.range, encounter.closingSpeed, encounter.aspectDegrees}) {
        text += ',';
        appendShortest(text, value);
    }
    text += '\n';
}
} // namespace

void writeSampleCsv(std::ostream& out, const QMap<double, keyframe>& samples, LengthUnit unit) {
    out << namesLine(unit);
    std::string text;
    for (auto sample = samples.cbegin(); sample != samples.cend(); ++sample) {
        // The speed is that of the interval after the sample; after the last one there is none.
        const auto next = std::next(sample);
        const bool isLast = next == samples.cend();
        const keyframe& earlier = isLast && sample != samples.cbegin() ? *std::prev(sample) : *sample;
        const keyframe& later = isLast ? *sample : *next;
        appendSample(text, *sample, encounterBetween(earlier, later, sample->time));
        if (text.size() >= kPieceBytes) {
            out << text;
            text.clear();
        }
    }
    out << text;
}
} // namespace sorvane
