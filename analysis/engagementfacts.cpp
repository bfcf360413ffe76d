// What is worked out once of an engagement: its closest approach and its events.
#include "engagementfacts.h"

#include <algorithm>
#include <unordered_set>

namespace sorvane {
namespace {
void addFlares(const QMap<double, keyframe>& samples, std::vector<EngagementEvent>& events) {
    std::unordered_set<int> known;
    for (const keyframe& sample : samples)
        for (const flareKeyframe& flare : sample.flares)
            if (known.insert(flare.id).second)
                events.push_back({sample.time, QStringLiteral("Flare %1").arg(flare.id)});
}

// Events that a step can't tell apart are one with all their names.
std::vector<EngagementEvent> merged(const std::vector<EngagementEvent>& events) {
    std::vector<EngagementEvent> distinct;
    for (const EngagementEvent& event : events)
        if (distinct.empty() || event.time - distinct.back().time > kTimeNoise)
            distinct.push_back(event);
        else
            distinct.back().name += QStringLiteral(", ") + event.name;
    return distinct;
}
} // namespace

EngagementFacts factsOf(const QMap<double, keyframe>& samples) {
    EngagementFacts facts;
    facts.closest = closestApproach(samples);
    facts.events.push_back({samples.firstKey(), QStringLiteral("First sample")});
    addFlares(samples, facts.events);
    if (facts.closest)
        facts.events.push_back({facts.closest->time, QStringLiteral("Closest approach")});
    facts.events.push_back({samples.lastKey(), QStringLiteral("Last sample")});
    std::ranges::stable_sort(facts.events, {}, &EngagementEvent::time);
    facts.events = merged(facts.events);
    return facts;
}
} // namespace sorvane
