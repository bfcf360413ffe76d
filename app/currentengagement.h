// The engagement that keys and read-out go by.
#pragma once

#include "engagementlist.h"

namespace sorvane {
// The selected engagement, or the one selected last when none is.
class CurrentEngagement {
public:
    explicit CurrentEngagement(const EngagementList& engagements) : engagements_(engagements) {}

    // A view of the engagement has been chosen, or unchecked.
    void remember(EngagementId id) { last_ = id; }

    // Null while no engagement was ever selected, or when the one selected last is gone.
    const LoadedEngagement* get() const;

private:
    const EngagementList& engagements_;
    EngagementId last_{};
};
} // namespace sorvane
