// Writes the text of a trajectory with the shortest numbers that read back equal.
#include "exactwriter.h"

#include <algorithm>

#include "shortestnumber.h"

namespace sorvane {
namespace {
constexpr int kBands = 3; // from which on each half axis counts

void append(std::string& text, const Triple& numbers) {
    for (const double number : numbers) {
        text += ' ';
        appendShortest(text, number);
    }
}

void append(std::string& text, const Flare& flare) {
    text += std::to_string(flare.id) + ' ' + std::to_string(flare.kind);
    append(text, flare.position);
    text += ' ';
    appendShortest(text, flare.brightness);
    append(text, flare.angles);
    append(text, flare.halfAxes);
    // A blend of a ball and an ellipsoid is an ellipsoid.
    const bool isBall = flare.halfAxes[0] == flare.halfAxes[1] && flare.halfAxes[0] == flare.halfAxes[2];
    text += ' ' + std::to_string(isBall ? flare.bandCount : std::max(flare.bandCount, kBands)) + '\n';
}

void append(std::string& text, const ExactSample& sample) {
    text += sample.comments;
    appendShortest(text, sample.time);
    text += ' ' + std::to_string(sample.flares.size());
    append(text, sample.targetPosition);
    append(text, sample.targetAttitude);
    std::string threat;
    append(threat, sample.threatPosition);
    append(threat, sample.threatAttitude);
    text.append("\n").append(threat, 1).append("\n").append(sample.ignoredWords);
    append(text, sample.gyro);
    text += '\n';
    for (const Flare& flare : sample.flares)
        append(text, flare);
}
} // namespace

std::string writtenTrajectory(const ExactTrajectory& trajectory) {
    std::string text = trajectory.header;
    for (const ExactSample& sample : trajectory.samples)
        append(text, sample);
    return text + trajectory.lastComments;
}
} // namespace sorvane
