// The trajectory file: what it holds, and its text.
#include "trajectory.h"

#include <string_view>

#include "numbertext.h"

namespace sorvane {
namespace {
std::string tripleText(const Vec3d& values) {
    std::string text;
    appendFixed(text, values);
    return text;
}

void appendFlare(std::string& text, const FlareSample& flare) {
    text += std::to_string(flare.id) + ' ' + std::to_string(flare.kind) + ' ';
    appendFixed(text, flare.position);
    text += ' ';
    appendFixed(text, flare.brightness);
    text += ' ';
    appendFixed(text, flare.angles);
    text += ' ';
    // Readers look at the second and third band only when the line announces three.
    appendFixed(text, flare.bandCount < 3 ? Vec3d{flare.scale.x, 0.0, 0.0} : flare.scale);
    text += ' ' + std::to_string(flare.bandCount) + '\n';
}

void appendSample(std::string& text, const TrajectorySample& sample) {
    appendFixed(text, sample.time);
    text += ' ' + std::to_string(sample.flares.size()) + ' ';
    appendFixed(text, sample.targetPosition);
    text += ' ';
    appendFixed(text, sample.targetAttitude);
    text += '\n';

    appendFixed(text, sample.threatPosition);
    text += ' ';
    appendFixed(text, sample.threatAttitude);
    text += '\n';

    appendFixed(text, sample.range);
    text += ' ';
    appendFixed(text, sample.closingSpeed);
    text += ' ';
    appendFixed(text, sample.gyro);
    text += '\n';

    for (const FlareSample& flare : sample.flares)
        appendFlare(text, flare);
}
} // namespace

std::string
trajectoryText(const TrajectoryHeader& header, const std::vector<TrajectorySample>& samples, Comments comments) {
    struct Line {
        std::string_view explanation;
        std::string contents;
    };
    const Line lines[] = {
        {"terrain topography", header.terrainTopography},
        {"terrain radiance", header.terrainRadiance},
        {"target signature", header.targetSignature},
        {"terrain posts", tripleText(header.terrainPosts)},
        {"terrain origin", tripleText(header.terrainOrigin)},
        {"target geometry", header.targetGeometry},
        {"target reflectance", header.targetReflectance},
        {"remark", header.remark},
        {"colour of the threat's path", header.colourName},
        {"run number", std::to_string(header.runNumber)},
        {"threat", header.threatId},
        {"field of view of the seeker, degrees", header.fieldOfView},
    };
    const bool explains = comments == Comments::Explanatory;
    std::string text;
    for (const Line& line : lines) {
        if (explains)
            text.append("# ").append(line.explanation).append("\n");
        text += line.contents + '\n';
    }
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (explains)
            text += "# sample " + std::to_string(i + 1) + " of " + std::to_string(samples.size()) + '\n';
        appendSample(text, samples[i]);
    }
    return text;
}
} // namespace sorvane
