// Steps through time: by samples, by seconds, by events.
#include "timesteps.h"

#include <algorithm>
#include <iterator>

#include <QDoubleSpinBox>
#include <QSlider>

#include "clocknumbers.h"

namespace sorvane {
namespace {
constexpr double kLeastSampleStep = 0.001 + kTimeNoise; // seconds
} // namespace

TimeSteps::TimeSteps(QDoubleSpinBox& box, const QSlider& slider, QObject* parent)
    : QObject(parent), box_(box), slider_(slider) {
    connect(&box_, &QDoubleSpinBox::valueChanged, this, [this] {
        if (!isStepping_)
            target_.reset();
    });
}

void TimeSteps::toSample(const QMap<double, keyframe>& samples, StepDirection direction) {
    const auto found = direction == StepDirection::Forward ? samples.upperBound(from() + kLeastSampleStep)
                                                           : samples.lowerBound(from() - kLeastSampleStep);
    if (direction == StepDirection::Forward) {
        if (found != samples.cend() && canShow(found.key()))
            to(found.key());
    } else if (found != samples.cbegin() && canShow(std::prev(found).key())) {
        to(std::prev(found).key());
    }
}

const EngagementEvent* TimeSteps::toEvent(const std::vector<EngagementEvent>& events, StepDirection direction) {
    const EngagementEvent* found = nullptr;
    for (const EngagementEvent& event : events) {
        const bool isAhead =
            direction == StepDirection::Forward ? event.time > from() + kTimeNoise : event.time < from() - kTimeNoise;
        if (isAhead && canShow(event.time) && (found == nullptr || direction == StepDirection::Back))
            found = &event;
    }
    if (found != nullptr)
        to(found->time);
    return found;
}

void TimeSteps::bySeconds(double seconds) {
    if (seconds < 0.0)
        to(std::max(std::min(from(), end()) + seconds, 0.0));
    else if (from() < end())
        to(std::min(from() + seconds, end()));
}

void TimeSteps::to(double time) {
    isStepping_ = true;
    box_.setValue(time);
    isStepping_ = false;
    target_ = time;
}

double TimeSteps::from() const {
    return target_.value_or(box_.value());
}

double TimeSteps::end() const {
    return std::min(slider_.maximum() * kSecondsPerSliderStep, box_.maximum());
}

bool TimeSteps::canShow(double time) const {
    return time >= box_.minimum() && time <= box_.maximum();
}
} // namespace sorvane
