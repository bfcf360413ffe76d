// Compares two trajectories: their headers, their times, and the fields of the samples of one time.
#include "trajectorycomparison.h"

#include <cmath>
#include <map>
#include <utility>

#include "shortestnumber.h"
#include "trajectoryheaderfields.h"

namespace sorvane {
namespace {
struct TripleField {
    const char* names[3];
    float (keyframe::*values)[3];
};

constexpr TripleField kTriples[] = {
    {{"target_x", "target_y", "target_z"}, &keyframe::targetPos},
    {{"target_roll", "target_pitch", "target_yaw"}, &keyframe::targetAtt},
    {{"threat_x", "threat_y", "threat_z"}, &keyframe::threatPos},
    {{"threat_roll", "threat_pitch", "threat_yaw"}, &keyframe::threatAtt},
    {{"gyro_roll", "gyro_pitch", "gyro_yaw"}, &keyframe::gyro},
};

struct FlareTriple {
    const char* names[3];
    float (flareKeyframe::*values)[3];
};

constexpr FlareTriple kFlareTriples[] = {
    {{"_x", "_y", "_z"}, &flareKeyframe::pos},
    {{"_value_1", "_value_2", "_value_3"}, &flareKeyframe::values},
    {{"_intensity_1", "_intensity_2", "_intensity_3"}, &flareKeyframe::intensity},
};

std::string textOf(const QString& text) {
    return text.toStdString();
}

std::string textOf(int number) {
    return std::to_string(number);
}

std::string textOf(float number) {
    return shortestText(number);
}

std::string textOf(const float (&triple)[3]) {
    return shortestText(triple[0]) + ' ' + shortestText(triple[1]) + ' ' + shortestText(triple[2]);
}

std::vector<HeaderDifference> compareHeaders(const TrajectoryFileHeader& a, const TrajectoryFileHeader& b) {
    std::vector<HeaderDifference> differences;
    for (const sorvane::TrajectoryHeaderField& field : sorvane::kTrajectoryHeaderFields) {
        const auto text = [&](const TrajectoryFileHeader& header) {
            return std::visit([&](auto member) { return textOf(header.*member); }, field.member);
        };
        const std::string textA = text(a);
        const std::string textB = text(b);
        if (textA != textB)
            differences.push_back({field.comparedName, textA, textB});
    }
    return differences;
}

// A flare among those of its id in one sample: id, and how many of the id stand before it.
using FlareKey = std::pair<int, int>;

std::map<FlareKey, const flareKeyframe*> flaresOf(const keyframe& sample) {
    std::map<FlareKey, const flareKeyframe*> flares;
    std::map<int, int> seen;
    for (const flareKeyframe& flare : sample.flares)
        flares.emplace(FlareKey{flare.id, seen[flare.id]++}, &flare);
    return flares;
}

class Comparison {
public:
    Comparison(double tolerance, const std::function<void(const SampleDifference&)>& report)
        : tolerance_(tolerance), report_(report) {}

    void compareSamples(const keyframe& a, const keyframe& b) {
        ++result.compared;
        time_ = a.time;
        for (const TripleField& triple : kTriples)
            for (int i = 0; i < 3; ++i)
                compare(triple.names[i], (a.*triple.values)[i], (b.*triple.values)[i]);
        compare("flare_count", a.flareCount, b.flareCount);
        if (a.flares != b.flares)
            compareFlares(a, b);
    }

    TrajectoryComparison result;

private:
    // The numbers are compared as a file would write them. A name is only put together for what differs.
    template <class Name> void compare(const Name& name, float a, float b) {
        if (a != b)
            take(name, shortestDouble(a), shortestDouble(b));
    }
    template <class Name> void compare(const Name& name, int a, int b) {
        if (a != b)
            take(name, a, b);
    }
    template <class Name> void take(const Name& name, double a, double b) {
        if (std::abs(a - b) > tolerance_)
            take({time_, std::string(name), a, b});
    }

    void compareFlares(const keyframe& a, const keyframe& b) {
        const auto flaresA = flaresOf(a);
        const auto flaresB = flaresOf(b);
        for (const auto& [key, flareA] : flaresA) {
            const auto found = flaresB.find(key);
            if (found == flaresB.end())
                lack(key, 1, 0);
            else
                compareFlare(*flareA, *found->second);
        }
        for (const auto& [key, flareB] : flaresB)
            if (!flaresA.contains(key))
                lack(key, 0, 1);
    }

    // Reported whatever the tolerance.
    void lack(const FlareKey& key, double a, double b) { take({time_, flareName(key.first), a, b}); }

    static std::string flareName(int id) { return std::string("flare_").append(std::to_string(id)); }

    void compareFlare(const flareKeyframe& a, const flareKeyframe& b) {
        const std::string flare = flareName(a.id);
        for (const FlareTriple& triple : kFlareTriples)
            for (int i = 0; i < 3; ++i)
                compare(flare + triple.names[i], (a.*triple.values)[i], (b.*triple.values)[i]);
        compare(flare + "_brightness", a.scalar, b.scalar);
        compare(flare + "_bands", a.bandCount, b.bandCount);
        compare(flare + "_kind", a.kind, b.kind);
    }

    void take(const SampleDifference& difference) {
        report_(difference);
        const auto [place, isNew] = places_.try_emplace(difference.field, result.fields.size());
        if (isNew)
            result.fields.push_back({difference.field, 0, difference});
        FieldSummary& summary = result.fields[place->second];
        ++summary.samples;
        if (difference.size() > summary.largest.size())
            summary.largest = difference;
    }

    double tolerance_;
    const std::function<void(const SampleDifference&)>& report_;
    double time_ = 0.0;
    std::map<std::string, std::size_t> places_; // of each field in result.fields
};
} // namespace

double SampleDifference::size() const {
    return std::abs(a - b);
}

TrajectoryComparison compareTrajectories(
    const TrajectoryFile& a, const TrajectoryFile& b, double tolerance,
    const std::function<void(const SampleDifference&)>& report) {
    Comparison comparison(tolerance, report);
    comparison.result.header = compareHeaders(a.header, b.header);
    auto sampleA = a.samples.cbegin();
    auto sampleB = b.samples.cbegin();
    while (sampleA != a.samples.cend() || sampleB != b.samples.cend()) {
        const bool hasA = sampleA != a.samples.cend();
        const bool hasB = sampleB != b.samples.cend();
        if (hasA && (!hasB || sampleA.key() < sampleB.key())) {
            comparison.result.onlyInA.push_back((sampleA++).key());
        } else if (hasB && (!hasA || sampleB.key() < sampleA.key())) {
            comparison.result.onlyInB.push_back((sampleB++).key());
        } else {
            comparison.compareSamples(*sampleA, *sampleB);
            ++sampleA;
            ++sampleB;
        }
    }
    return std::move(comparison.result);
}
} // namespace sorvane
