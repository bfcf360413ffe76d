// The facts of the engagements in the window.
#include "factsofengagements.h"

#include "etxyz.h"

void FactsOfEngagements::add(const etxyz& engagement) {
    entries_[&engagement] = {.samples = engagement.keyframes, .facts = {}};
}

const EngagementFacts& FactsOfEngagements::of(const etxyz& engagement) {
    Entry& entry = entries_.at(&engagement);
    if (!entry.facts) {
        entry.facts = factsOf(entry.samples);
        entry.samples.clear();
    }
    return *entry.facts;
}
