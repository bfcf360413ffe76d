// The facts of the engagements in the window.
#pragma once

#include <map>
#include <optional>

#include "engagementfacts.h"

class etxyz;

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
