// An engagement as measures see it: its samples, its flares by identifier, and where the seeker looks.
#include "measuredengagement.h"

#include <utility>

#include "shortestnumber.h"

namespace sorvane {
MeasuredEngagement::MeasuredEngagement(
    std::shared_ptr<const SampleSeries> series, float fieldOfViewDegrees, LengthUnit unit)
    : series_(std::move(series)), tracks_(*series_), halfFieldDegrees_(shortestDouble(fieldOfViewDegrees) / 2.0),
      unit_(unit) {
    gyroAxes_.reserve(samples().size());
    for (const Sample& sample : samples())
        gyroAxes_.push_back(xAxis(sample.gyro));
}

// A pointer that owns nothing.
MeasuredEngagement::MeasuredEngagement(const SampleSeries& series, float fieldOfViewDegrees, LengthUnit unit)
    : MeasuredEngagement(
          std::shared_ptr<const SampleSeries>(std::shared_ptr<const SampleSeries>(), &series), fieldOfViewDegrees,
          unit) {}

std::optional<FlareMoment> MeasuredEngagement::flareAt(std::size_t track, const Moment& moment) const {
    const std::size_t row = tracks_.rowAt(track, moment.sample);
    return row == FlareTracks::kNone ? std::nullopt : flareOfRow(row, moment);
}

std::optional<FlareMoment> MeasuredEngagement::flareOfRow(std::size_t row, const Moment& moment) const {
    if (tracks_.trackOf(row) == FlareTracks::kNone)
        return std::nullopt;
    return FlareMoment{moment, row, moment.isOnSample ? FlareTracks::kNone : tracks_.next(row)};
}

Triple MeasuredEngagement::gyroAxis(const Moment& moment) const {
    return moment.isOnSample ? gyroAxes_[moment.sample] : xAxis(blended(moment, &Sample::gyro));
}

Triple MeasuredEngagement::flarePosition(const FlareMoment& flare) const {
    const Triple& position = flares().positions[flare.row];
    return flare.next == FlareTracks::kNone ? position
                                            : blended(position, flares().positions[flare.next], flare.moment.part);
}

double MeasuredEngagement::bandOf(const FlareMoment& flare, std::size_t band) const {
    const double value = flares().bands[flare.row][band];
    return flare.next == FlareTracks::kNone ? value
                                            : blended(value, flares().bands[flare.next][band], flare.moment.part);
}
} // namespace sorvane
