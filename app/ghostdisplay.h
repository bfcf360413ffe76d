// Ghosts in the viewer: which engagements are drawn so, in which colours, and from when their time counts.
#pragma once

#include <functional>
#include <map>
#include <optional>

#include <QObject>

#include "engagementlist.h"
#include "measuretext.h"
#include "overlaytext.h"

class AircraftWidget;
class QTimer;

namespace sorvane {
class CurrentEngagement;
class GhostLegend;
class ViewNotice;

// All engagements but the current one, while they are on.
class GhostDisplay : public QObject {
public:
    // What it works on. Nothing here is owned.
    struct Parts {
        AircraftWidget& view;
        const EngagementList& engagements;
        const CurrentEngagement& current;
        ViewNotice& notice;
        std::function<LengthUnit()> unit; // that lengths are told in
    };

    GhostDisplay(const Parts& parts, QObject* parent);

    void toggle();
    // What they are coloured by, and which moments of all engagements fall together. Both show the ghosts.
    void cycleMeasure();
    void cycleAlignment();
    // Another engagement may be the current one, or there may be another unit.
    void refresh();

private:
    enum class Measure { ClosestApproach, Decoyed };
    enum class Alignment { Launch, FirstFlare, ClosestApproach };
    // Of an engagement; NaN is what is undefined.
    struct Facts {
        double launch = 0.0; // seconds, as all times
        double firstFlare = 0.0;
        double closestTime = 0.0;
        double closestApproach = 0.0; // units
        double decoyed = 0.0;         // 1 or 0

        double timeOf(Alignment alignment) const;
    };

    static Facts factsOf(const LoadedEngagement& engagement);
    // Works them out, a piece of many at a time, so that the window lives; false when there is more to do.
    bool workOut();
    // What the colours stand for; of those whose facts are known.
    ColourLegend legendOf() const;
    std::size_t colourOf(const Facts& facts, const ColourLegend& legend) const;
    void show();
    void tell();

    Parts parts_;
    bool isOn_ = false;
    Measure measure_ = Measure::ClosestApproach;
    Alignment alignment_ = Alignment::Launch;
    std::map<EngagementId, Facts> facts_;
    GhostLegend* legend_; // of the view's children
    QTimer* rest_;        // works out the rest
};
} // namespace sorvane
