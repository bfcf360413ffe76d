// What is worked out once of an engagement: its closest approach and its events.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include <QString>

#include "encounter.h"

class etxyz;

struct EngagementEvent {
    double time = 0.0; // seconds
    QString name;
};

struct EngagementFacts {
    std::optional<ClosestApproach> closest;
    std::vector<EngagementEvent> events; // in order of time
};

// The first and the last sample, each flare's first appearance and the closest approach. Needs at least one sample.
EngagementFacts factsOf(const etxyz& engagement);

// The facts of the engagements in the window. They are worked out when an engagement is loaded, before the drawing of a
// terrain may add an empty sample to it.
class FactsOfEngagements {
public:
    void add(const etxyz& engagement) { facts_[&engagement] = factsOf(engagement); }
    void forget(const etxyz& engagement) { facts_.erase(&engagement); }
    const EngagementFacts& of(const etxyz& engagement) const { return facts_.at(&engagement); }

private:
    std::map<const etxyz*, EngagementFacts> facts_;
};
