// What is worked out once of an engagement: its closest approach and its events.
#include "engagementfacts.h"

#include <algorithm>
#include <unordered_set>

namespace sorvane {
namespace {
void addFlares(const SampleSeries& series, std::vector<EngagementEvent>& events) {
    std::unordered_set<int> known;
    for (std::size_t i = 0; i < series.samples().size(); ++i)
        for (const int id : series.flareIds(i))
            if (known.insert(id).second)
                events.push_back({series.samples()[i].time, QStringLiteral("Flare %1").arg(id)});
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

EngagementFacts factsOf(const SampleSeries& series) {
    EngagementFacts facts;
    facts.closest = closestApproach(series.samples());
    facts.events.push_back({series.samples().front().time, QStringLiteral("First sample")});
    addFlares(series, facts.events);
    if (facts.closest)
        facts.events.push_back({facts.closest->time, QStringLiteral("Closest approach")});
    facts.events.push_back({series.samples().back().time, QStringLiteral("Last sample")});
    std::ranges::stable_sort(facts.events, {}, &EngagementEvent::time);
    facts.events = merged(facts.events);
    return facts;
}
} // namespace sorvane
