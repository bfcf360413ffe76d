// What is worked out once of an engagement: its closest approach and its events.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include <QString>

#include "encounter.h"

class etxyz;

constexpr double kTimeNoise = 1.0e-9; // seconds; what rounding adds to equal times

struct EngagementEvent {
    double time = 0.0; // seconds
    QString name;
};

struct EngagementFacts {
    std::optional<ClosestApproach> closest;
    std::vector<EngagementEvent> events; // in order of time, each at a time of its own
};

// The first and the last sample, each flare's first appearance and the closest approach. Needs at least one sample.
EngagementFacts factsOf(const QMap<double, keyframe>& samples);

// The facts of the engagements in the window, worked out when they are first asked for. They are those of the samples
// that were loaded: until then the samples are shared with the engagement, to which the drawing of a terrain may add an
// empty one.
class FactsOfEngagements {
public:
    void add(const etxyz& engagement);
    void forget(const etxyz& engagement) { entries_.erase(&engagement); }
    const EngagementFacts& of(const etxyz& engagement);

private:
    struct Entry {
        QMap<double, keyframe> samples; // empty as soon as there are facts
        std::optional<EngagementFacts> facts;
    };

    std::map<const etxyz*, Entry> entries_;
};
