// How far the clock runs: to the end of the time box, or on demand to the end of the longest engagement.
#pragma once

#include <QObject>

class QDoubleSpinBox;
class QSlider;

namespace sorvane {
class EngagementList;
class LoadNotice;
class LoadedEngagement;
class ViewNotice;

// The two ends that a time can come to. Nothing here is owned.
struct ClockEnds {
    QDoubleSpinBox& box;
    const QSlider& slider; // to the end of the longest engagement
};

// Tells of engagements that end later than the time box, for as long as it has not been extended.
class ClockReach : public QObject {
public:
    ClockReach(const ClockEnds& ends, const EngagementList& engagements, LoadNotice& loads, QObject* parent);

    // From now on the time box ends where the longest engagement does, if that is later.
    void extend(ViewNotice& notice);
    // Whether the slider goes on where the box ends.
    bool isShort() const;

private:
    void reachEnd();
    void tell(const LoadedEngagement& loaded);

    ClockEnds ends_;
    LoadNotice& loads_;
    bool isExtended_ = false;
};
} // namespace sorvane
