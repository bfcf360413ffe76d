// What lies in the seeker's field of view, a cone about the gyro's axis.
#include "seekerfield.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
namespace {
// An angle by the square of the chord that it spans on the unit sphere: it grows with the angle, keeps its digits near
// the axis and takes no trigonometry. NaN where the angle is.
double chordSquare(const Triple& axis, const Triple& direction) {
    const Triple chord = difference(scaled(direction, 1.0 / length(direction)), axis);
    return dot(chord, chord);
}

double chordSquareOf(double degrees) {
    constexpr double kHalfTurn = 180.0;
    if (!(degrees >= 0.0))
        return -1.0; // no object lies in that field
    const double half = std::min(degrees, kHalfTurn) / 2.0 / kDegreesPerRadian;
    const double square = 4.0 * std::sin(half) * std::sin(half);
    return degrees >= kHalfTurn ? square + 1.0 : square;
}

Triple fromThreat(const Moment& moment, const Triple& position) {
    return difference(position, blended(moment, &Sample::threatPosition));
}

// Goes through the samples once. What is in the field is told by chords; angles are worked out where one crosses the
// edge.
class FieldScan {
public:
    explicit FieldScan(const MeasuredEngagement& engagement)
        : engagement_(engagement), edge_(chordSquareOf(engagement.halfFieldDegrees())) {
        times_.flares.resize(engagement.tracks().size());
        flareChords_.resize(engagement.tracks().rowCount());
    }

    FieldTimes run() {
        for (std::size_t sample = 0; sample < engagement_.samples().size(); ++sample)
            include(sample);
        for (std::size_t sample = 0; sample + 1 < engagement_.samples().size(); ++sample)
            addInterval(sample);
        return times_;
    }

private:
    void include(std::size_t sample) {
        const Moment moment = engagement_.on(sample);
        const Triple axis = engagement_.gyroAxis(moment);
        const double target = chordSquare(axis, scaled(fromTargetToThreat(engagement_.samples()[sample]), -1.0));
        targetChords_.push_back(target);
        double nearestFlare = INFINITY;
        const auto [begin, end] = engagement_.series().flareRows(sample);
        for (std::size_t row = begin; row < end; ++row) {
            flareChords_[row] = chordSquare(
                axis, difference(engagement_.flares().positions[row], engagement_.samples()[sample].threatPosition));
            if (flareChords_[row] <= edge_ && engagement_.tracks().trackOf(row) != FlareTracks::kNone)
                nearestFlare = std::min(nearestFlare, flareChords_[row]);
        }
        if (target <= edge_ && !(nearestFlare < target)) {
            times_.targetLastNearest = engagement_.samples()[sample].time;
            times_.isDecoyed = false;
        } else if (nearestFlare < INFINITY) {
            times_.isDecoyed = true;
        }
    }

    // From a sample to the next one.
    void addInterval(std::size_t sample) {
        const std::span<const Sample> samples = engagement_.samples();
        const Moment start{&samples[sample], &samples[sample + 1], 0.0, sample};
        const Moment end{start.earlier, start.later, 1.0, sample + 1};
        times_.target +=
            secondsWithin(start, end, targetChords_[sample], targetChords_[sample + 1], [](const Moment& m) {
                return scaled(fromTargetToThreat(m), -1.0);
            });
        const auto [first, last] = engagement_.series().flareRows(sample);
        for (std::size_t row = first; row < last; ++row)
            if (const std::size_t track = engagement_.tracks().trackOf(row); track != FlareTracks::kNone)
                times_.flares[track] += flareSecondsWithin(row, start, end);
    }

    double flareSecondsWithin(std::size_t row, const Moment& start, const Moment& end) const {
        const std::size_t next = engagement_.tracks().next(row);
        const bool goesOut = next == FlareTracks::kNone;
        const Triple& from = engagement_.flares().positions[row];
        const Triple& to = goesOut ? from : engagement_.flares().positions[next];
        const double chordAtEnd =
            goesOut ? chordSquare(engagement_.gyroAxis(end), fromThreat(end, to)) : flareChords_[next];
        return secondsWithin(start, end, flareChords_[row], chordAtEnd, [&](const Moment& m) {
            return fromThreat(m, m.part == 0.0 ? from : to);
        });
    }

    template <class Direction>
    double secondsWithin(
        const Moment& start, const Moment& end, double chordAtStart, double chordAtEnd, Direction direction) const {
        const bool isInAtStart = chordAtStart <= edge_;
        if (isInAtStart == (chordAtEnd <= edge_))
            return isInAtStart ? start.seconds() : 0.0;
        const double from = degreesBetween(engagement_.gyroAxis(start), direction(start));
        const double to = degreesBetween(engagement_.gyroAxis(end), direction(end));
        const double crossing = (engagement_.halfFieldDegrees() - from) / (to - from);
        if (std::isnan(crossing))
            return 0.0;
        const double before = std::clamp(crossing, 0.0, 1.0);
        return start.seconds() * (isInAtStart ? before : 1.0 - before);
    }

    const MeasuredEngagement& engagement_;
    double edge_;
    FieldTimes times_;
    std::vector<double> targetChords_;
    std::vector<double> flareChords_; // by row
};
} // namespace

std::optional<FieldObject> nearestToAxis(const MeasuredEngagement& engagement, const Moment& moment) {
    const Triple axis = engagement.gyroAxis(moment);
    double nearest = chordSquareOf(engagement.halfFieldDegrees());
    std::optional<FieldObject> found;
    Triple direction{};
    const auto consider = [&](std::optional<std::size_t> track, const Triple& towards) {
        const double chord = chordSquare(axis, towards);
        if (!(found ? chord < nearest : chord <= nearest))
            return;
        nearest = chord;
        direction = towards;
        found = FieldObject{track};
    };
    consider(std::nullopt, scaled(fromTargetToThreat(moment), -1.0));
    const auto [begin, end] = engagement.series().flareRows(moment.sample);
    for (std::size_t row = begin; row < end; ++row)
        if (const std::optional<FlareMoment> flare = engagement.flareOfRow(row, moment))
            consider(engagement.tracks().trackOf(row), fromThreat(moment, engagement.flarePosition(*flare)));
    if (found)
        found->offBoresightDegrees = degreesBetween(axis, direction);
    return found;
}

double flareBrightnessInField(const MeasuredEngagement& engagement, const Moment& moment) {
    const Triple axis = engagement.gyroAxis(moment);
    const double edge = chordSquareOf(engagement.halfFieldDegrees());
    double sum = 0.0;
    const auto [begin, end] = engagement.series().flareRows(moment.sample);
    for (std::size_t row = begin; row < end; ++row) {
        const std::optional<FlareMoment> flare = engagement.flareOfRow(row, moment);
        if (flare && chordSquare(axis, fromThreat(moment, engagement.flarePosition(*flare))) <= edge)
            sum += engagement.flares().brightnesses[row];
    }
    return sum;
}

FieldTimes fieldTimes(const MeasuredEngagement& engagement) {
    return FieldScan(engagement).run();
}
} // namespace sorvane
