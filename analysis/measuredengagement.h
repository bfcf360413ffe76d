// An engagement as measures see it: its samples, its flares by identifier, and where the seeker looks.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "encounter.h"
#include "flaretracks.h"
#include "measuretext.h"
#include "targetradiometry.h"

namespace sorvane {
// A flare at one time.
struct FlareMoment {
    Moment moment;
    std::size_t row = 0; // in the last sample not after the time
    // The same flare in the next sample. FlareTracks::kNone when it is out there, and on a sample.
    std::size_t next = FlareTracks::kNone;
};

// May be asked from several threads at once.
class MeasuredEngagement {
public:
    // `fieldOfViewDegrees` is the full cone angle of the seeker; its double is the one with the same digits.
    MeasuredEngagement(
        std::shared_ptr<const SampleSeries> series, float fieldOfViewDegrees, LengthUnit unit = LengthUnit::Unstated);
    // Of a series that outlives it and stays as it is.
    MeasuredEngagement(const SampleSeries& series, float fieldOfViewDegrees, LengthUnit unit = LengthUnit::Unstated);

    std::span<const Sample> samples() const { return series_->samples(); }
    const FlareColumns& flares() const { return series_->flares(); }
    const FlareTracks& tracks() const { return tracks_; }
    const SampleSeries& series() const { return *series_; }
    LengthUnit unit() const { return unit_; }
    double halfFieldDegrees() const { return halfFieldDegrees_; }
    // What the target radiates; null until it is given, and measures that need it are undefined so long.
    const TargetRadiometry* radiometry() const { return radiometry_.get(); }
    void setRadiometry(std::shared_ptr<const TargetRadiometry> radiometry) { radiometry_ = std::move(radiometry); }

    Moment on(std::size_t sample) const { return momentOn(samples(), sample); }
    std::optional<Moment> at(double time) const { return momentAt(samples(), time); }
    // A row of flares(), on its sample.
    FlareMoment onRow(std::size_t row) const { return {on(tracks_.sampleOf(row)), row}; }
    // Nothing when the flare doesn't burn then. It is out from the first sample on that doesn't list it.
    std::optional<FlareMoment> flareAt(std::size_t track, const Moment& moment) const;
    // A row of the moment's sample. Nothing for one that doesn't count.
    std::optional<FlareMoment> flareOfRow(std::size_t row, const Moment& moment) const;

    // Where the seeker's axis points: that of the gyro view, whose camera looks along the x axis of the gyro's angles.
    Triple gyroAxis(const Moment& moment) const;
    // As it is drawn: where the next sample lacks the flare it stays.
    Triple flarePosition(const FlareMoment& flare) const;
    double bandOf(const FlareMoment& flare, std::size_t band) const;

private:
    std::shared_ptr<const SampleSeries> series_;
    FlareTracks tracks_;
    std::vector<Triple> gyroAxes_; // on the samples
    double halfFieldDegrees_ = 0.0;
    LengthUnit unit_ = LengthUnit::Unstated;
    std::shared_ptr<const TargetRadiometry> radiometry_;
};
} // namespace sorvane
