// What is measured of the radiation of target and flares. NaN without the engagement's radiometry, and, of intensities
// and their ratios, without the unit of length.
#pragma once

#include "engagementresults.h"

namespace sorvane {
// W/sr towards the threat: emission times the square of the unit in cm; of the run's band, and of another one.
double targetIntensity(const MeasuredEngagement& engagement, const Moment& moment);
double targetIntensity(const MeasuredEngagement& engagement, const Moment& moment, char bandDigit);

// W/cm² at the threat: intensity over the square of the range. Needs no unit, since the unit's square is in both.
double targetIrradiance(const MeasuredEngagement& engagement, const Moment& moment);

// W/sr by which the target is brighter than what it hides, a background of one radiance.
double targetContrast(const MeasuredEngagement& engagement, const Moment& moment);

// Intensity of one flare, and of all in the seeker's field together, over that of the target.
double flareJamToSignal(const MeasuredEngagement& engagement, const FlareMoment& flare);
double jamToSignal(const MeasuredEngagement& engagement, const Moment& moment);

// Over the samples.
RadiometricResults radiometricResults(const MeasuredEngagement& engagement);
} // namespace sorvane
