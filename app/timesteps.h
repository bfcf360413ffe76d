// Steps through time: by samples, by seconds, by events.
#pragma once

#include <optional>

#include <QMap>
#include <QObject>

#include "engagementfacts.h"
#include "keyframe.h"

class QDoubleSpinBox;
class QSlider;

namespace sorvane {
enum class StepDirection { Back, Forward };

// Times are set through the time box. It and the slider can't hold every millisecond, so a step goes from where the
// last one was aimed at, not from where it arrived, until the time changes otherwise.
class TimeSteps : public QObject {
public:
    // The slider's maximum is the end of the longest engagement.
    TimeSteps(QDoubleSpinBox& box, const QSlider& slider, QObject* parent);

    // To the first sample more than 1 ms later or earlier.
    void toSample(const QMap<double, keyframe>& samples, StepDirection direction);
    // To the next event later or earlier; null when there is none.
    const EngagementEvent* toEvent(const std::vector<EngagementEvent>& events, StepDirection direction);
    // Not past the start or the end of the longest engagement.
    void bySeconds(double seconds);
    void toStart() { to(0.0); }
    void toEnd() { to(end()); }
    // To a time that the box can show.
    void to(double time);
    bool canShow(double time) const;

private:
    double from() const;
    double end() const;

    QDoubleSpinBox& box_;
    const QSlider& slider_;
    std::optional<double> target_; // of the last step, while the time is where it arrived
    bool isStepping_ = false;
};
} // namespace sorvane
