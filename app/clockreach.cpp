// How far the clock runs: to the end of the time box, or on demand to the end of the longest engagement.
#include "clockreach.h"

#include <algorithm>

#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QSlider>

#include "clocknumbers.h"
#include "engagementlist.h"
#include "keytable.h"
#include "loadnotice.h"
#include "measuretext.h"
#include "playbackclock.h"
#include "viewnotice.h"

namespace sorvane {
ClockReach::ClockReach(const ClockEnds& ends, const EngagementList& engagements, LoadNotice& loads, QObject* parent)
    : QObject(parent), ends_(ends), loads_(loads) {
    connect(&ends_.slider, &QSlider::rangeChanged, this, [this] { reachEnd(); });
    const auto tellNew = [this](const LoadedEngagement& loaded) {
        tell(loaded);
    };
    connect(&engagements, &EngagementList::added, this, tellNew);
    connect(&engagements, &EngagementList::replaced, this, tellNew);
}

void ClockReach::extend(ViewNotice& notice) {
    isExtended_ = true;
    reachEnd();
    loads_.setLast({});
    notice.notify(QStringLiteral("The clock runs to %1").arg(timeText(ends_.box.maximum())));
}

bool ClockReach::isShort() const {
    return ends_.slider.maximum() > sliderValue(ends_.box.maximum());
}

void ClockReach::reachEnd() {
    if (isExtended_)
        ends_.box.setMaximum(std::max(kTimeBoxEnd, ends_.slider.maximum() * kSecondsPerSliderStep));
}

// Of several, the longest one: it is the one that the slider ends with.
void ClockReach::tell(const LoadedEngagement& loaded) {
    if (isShort() && endOnSlider(loaded.data()) == ends_.slider.maximum())
        loads_.setLast(QStringLiteral("%1 ends at %2, the clock at %3: %4 lets it run to the end")
                           .arg(
                               QFileInfo(loaded.path()).fileName(),
                               timeText(ends_.slider.maximum() * kSecondsPerSliderStep), timeText(ends_.box.maximum()),
                               keyTexts(KeyCommand::ExtendClock)));
}
} // namespace sorvane
