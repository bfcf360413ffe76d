// Compares two trajectories: their headers, their times, and the fields of the samples of one time.
#include "trajectorycomparison.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "shortestnumber.h"
#include "trajectoryheaderfields.h"
#include "withoutnoise.h"

namespace sorvane {
namespace {
struct TripleField {
    const char* names[3];
    Triple Sample::*values;
};

constexpr TripleField kTriples[] = {
    {{"target_x", "target_y", "target_z"}, &Sample::targetPosition},
    {{"target_roll", "target_pitch", "target_yaw"}, &Sample::targetAttitude},
    {{"threat_x", "threat_y", "threat_z"}, &Sample::threatPosition},
    {{"threat_roll", "threat_pitch", "threat_yaw"}, &Sample::threatAttitude},
    {{"gyro_roll", "gyro_pitch", "gyro_yaw"}, &Sample::gyro},
};

struct FlareTriple {
    const char* names[3];
    Triple Flare::*values;
};

constexpr FlareTriple kFlareTriples[] = {
    {{"_x", "_y", "_z"}, &Flare::position},
    {{"_value_1", "_value_2", "_value_3"}, &Flare::angles},
    {{"_intensity_1", "_intensity_2", "_intensity_3"}, &Flare::halfAxes},
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

std::map<FlareKey, const Flare*> flaresOf(const FlaredSample& sample) {
    std::map<FlareKey, const Flare*> flares;
    std::map<int, int> seen;
    for (const Flare& flare : sample.flares)
        flares.emplace(FlareKey{flare.id, seen[flare.id]++}, &flare);
    return flares;
}

double differenceOf(double a, double b) {
    return withoutNoise(std::abs(a - b), std::max(std::abs(a), std::abs(b)));
}

class Comparison {
public:
    Comparison(double tolerance, const std::function<void(const SampleDifference&)>& report)
        : tolerance_(tolerance), report_(report) {}

    void compareSamples(const FlaredSample& a, const FlaredSample& b) {
        ++result.compared;
        time_ = a.time;
        for (const TripleField& triple : kTriples)
            for (std::size_t i = 0; i < 3; ++i)
                compare(triple.names[i], (a.*triple.values)[i], (b.*triple.values)[i]);
        compare("flare_count", a.flareCount, b.flareCount);
        if (a.flares != b.flares)
            compareFlares(a, b);
    }

    TrajectoryComparison result;

private:
    // A name is only put together for what differs.
    template <class Name> void compare(const Name& name, double a, double b) {
        if (a != b && differenceOf(a, b) > tolerance_)
            take({time_, std::string(name), a, b});
    }

    void compareFlares(const FlaredSample& a, const FlaredSample& b) {
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

    void compareFlare(const Flare& a, const Flare& b) {
        const std::string flare = flareName(a.id);
        for (const FlareTriple& triple : kFlareTriples)
            for (std::size_t i = 0; i < 3; ++i)
                compare(flare + triple.names[i], (a.*triple.values)[i], (b.*triple.values)[i]);
        compare(flare + "_brightness", a.brightness, b.brightness);
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
    return differenceOf(a, b);
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
        if (hasA && (!hasB || sampleA->time < sampleB->time)) {
            comparison.result.onlyInA.push_back((sampleA++)->time);
        } else if (hasB && (!hasA || sampleB->time < sampleA->time)) {
            comparison.result.onlyInB.push_back((sampleB++)->time);
        } else {
            comparison.compareSamples(*sampleA, *sampleB);
            ++sampleA;
            ++sampleB;
        }
    }
    return std::move(comparison.result);
}
} // namespace sorvane
