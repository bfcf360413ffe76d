// The formulas of the table of measures, over spans of moments.
#pragma once

#include "bodymotion.h"
#include "measure.h"
#include "radiometricmeasures.h"

namespace sorvane::formulas {
// The formula of one moment over a whole span; it becomes part of the loop.
template <auto formula, class State>
void overSpan(const MeasuredEngagement& e, std::span<const State> states, std::span<double> values) {
    for (std::size_t i = 0; i < states.size(); ++i)
        values[i] = formula(e, states[i]);
}
template <auto formula> constexpr MomentFormula overMoments = overSpan<formula, Moment>;
template <auto formula> constexpr FlareFormula overFlares = overSpan<formula, FlareMoment>;

inline Triple toTarget(const Moment& m) {
    return scaled(fromTargetToThreat(m), -1.0);
}

// Of two bodies.
inline double range(const MeasuredEngagement&, const Moment& m) {
    return length(fromTargetToThreat(m));
}

inline double closing(const MeasuredEngagement&, const Moment& m) {
    return closingSpeed(m);
}

inline double lineOfSightRate(const MeasuredEngagement&, const Moment& m) {
    const Triple r = fromTargetToThreat(m);
    return length(cross(r, relativeVelocity(m))) / dot(r, r) * kDegreesPerRadian;
}

inline double zeroEffortMiss(const MeasuredEngagement&, const Moment& m) {
    const Triple v = relativeVelocity(m);
    return length(cross(fromTargetToThreat(m), v)) / length(v);
}

inline double timeToGo(const MeasuredEngagement&, const Moment& m) {
    const Triple v = relativeVelocity(m);
    return -dot(fromTargetToThreat(m), v) / dot(v, v);
}

inline double leadAngle(const MeasuredEngagement&, const Moment& m) {
    return degreesBetween(threatVelocity(m), toTarget(m));
}

// Of the target's body axes: x ahead, y to the right, z down.
inline double aspectAngle(const MeasuredEngagement&, const Moment& m) {
    return aspect(m);
}

double azimuth(const MeasuredEngagement& e, const Moment& m);
double elevation(const MeasuredEngagement& e, const Moment& m);

// Of one body.
template <BodyPosition position> double speed(const MeasuredEngagement& e, const Moment& m) {
    const double onSample = speedOn(e.samples(), position, m.sample);
    return m.isOnSample ? onSample : blended(onSample, speedOn(e.samples(), position, m.sample + 1), m.part);
}

template <BodyPosition position> double altitude(const MeasuredEngagement&, const Moment& m) {
    return -blended((m.earlier->*position)[2], (m.later->*position)[2], m.part);
}

template <BodyPosition position> double lateralAcceleration(const MeasuredEngagement& e, const Moment& m) {
    const double onSample = lateralAccelerationOn(e.samples(), position, m.sample);
    if (m.isOnSample)
        return onSample;
    return blended(onSample, lateralAccelerationOn(e.samples(), position, m.sample + 1), m.part);
}

template <BodyPosition position> double loadFactor(const MeasuredEngagement& e, const Moment& m) {
    constexpr double kStandardGravity = 9.80665; // m/s², exact
    if (e.unit() == LengthUnit::Unstated)
        return std::nan("");
    return lateralAcceleration<position>(e, m) * metresPer(e.unit()) / kStandardGravity;
}

// Of the seeker.
inline double offBoresight(const MeasuredEngagement& e, const Moment& m) {
    return degreesBetween(e.gyroAxis(m), toTarget(m));
}

inline double halfField(const MeasuredEngagement& e, const Moment&) {
    return e.halfFieldDegrees();
}

inline double flaresBurning(const MeasuredEngagement& e, const Moment& m) {
    return static_cast<double>(e.tracks().countAt(m.sample));
}

double nearest(const MeasuredEngagement& e, const Moment& m);
double nearestOffBoresight(const MeasuredEngagement& e, const Moment& m);

// Of a flare.
inline double flareAge(const MeasuredEngagement& e, const FlareMoment& f) {
    return f.moment.time() - e.samples()[e.tracks().litSince(f.row)].time;
}

inline double flareRange(const MeasuredEngagement& e, const FlareMoment& f) {
    return length(difference(e.flarePosition(f), blended(f.moment, &Sample::threatPosition)));
}

inline double flareDistance(const MeasuredEngagement& e, const FlareMoment& f) {
    return length(difference(e.flarePosition(f), blended(f.moment, &Sample::targetPosition)));
}

inline double flareOffBoresight(const MeasuredEngagement& e, const FlareMoment& f) {
    const Triple towards = difference(e.flarePosition(f), blended(f.moment, &Sample::threatPosition));
    return degreesBetween(e.gyroAxis(f.moment), towards);
}

inline double flareBrightness(const MeasuredEngagement& e, const FlareMoment& f) {
    return e.flares().brightnesses[f.row];
}

// Of the target's radiation, in the band of the run's files or in another one.
inline double ownIntensity(const MeasuredEngagement& e, const Moment& m) {
    return targetIntensity(e, m);
}
template <char digit> double intensityInBand(const MeasuredEngagement& e, const Moment& m) {
    return targetIntensity(e, m, digit);
}

template <std::size_t band> double flareBand(const MeasuredEngagement& e, const FlareMoment& f) {
    return e.bandOf(f, band);
}
} // namespace sorvane::formulas
