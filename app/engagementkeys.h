// Keys that go through what is loaded: follow another engagement, take one out, hide all others.
#pragma once

#include "timesteps.h"

class AircraftWidget;
class QWidget;

namespace sorvane {
class CurrentEngagement;
class EngagementList;
class LoadedEngagement;
class ViewNotice;

// What the keys work on. Nothing here is owned.
struct EngagementKeysParts {
    QWidget& window; // under the question before an engagement is taken out
    EngagementList& engagements;
    const CurrentEngagement& current;
    const AircraftWidget& view;
    ViewNotice& notice;
};

class EngagementKeys {
public:
    explicit EngagementKeys(const EngagementKeysParts& parts) : parts_(parts) {}

    // Follows the engagement that was loaded after or before the current one, in the same view, and shows it when it
    // is hidden. While all others are hidden, it is then the only one that shows.
    void follow(StepDirection direction);
    // Follows this one likewise.
    void follow(const LoadedEngagement& engagement);
    // Takes the current one out, after a question that can be answered for the rest of the session, and follows the
    // next one.
    void remove();
    // Hides all but the current one, and shows all again.
    void toggleOthers();

private:
    const LoadedEngagement* neighbour(const LoadedEngagement& engagement, StepDirection direction) const;
    void choose(const LoadedEngagement& engagement) const;
    void showOnly(const LoadedEngagement* only) const; // all for null
    bool isAgreed(const LoadedEngagement& engagement);

    EngagementKeysParts parts_;
    bool areOthersHidden_ = false;
    bool isAsking_ = true;
};
} // namespace sorvane
