// What is measured of the radiation of target and flares.
#include "radiometricmeasures.h"

#include <cmath>

#include "seekerfield.h"

namespace sorvane {
namespace {
double orUndefined(double value) {
    return std::isfinite(value) ? value : std::nan("");
}

double squareCentimetresPer(LengthUnit unit) {
    const double centimetres = 100.0 * metresPer(unit);
    return unit == LengthUnit::Unstated ? std::nan("") : centimetres * centimetres;
}

double ratioToTarget(const MeasuredEngagement& engagement, double brightness, const Moment& moment) {
    if (engagement.radiometry() == nullptr)
        return std::nan("");
    return orUndefined(engagement.radiometry()->flareScale() * brightness / targetIntensity(engagement, moment));
}
} // namespace

double targetIntensity(const MeasuredEngagement& engagement, const Moment& moment) {
    if (engagement.radiometry() == nullptr)
        return std::nan("");
    return squareCentimetresPer(engagement.unit()) * engagement.radiometry()->emissionAt(moment.time());
}

double targetIntensity(const MeasuredEngagement& engagement, const Moment& moment, char bandDigit) {
    if (engagement.radiometry() == nullptr)
        return std::nan("");
    return squareCentimetresPer(engagement.unit()) * engagement.radiometry()->emissionAt(moment.time(), bandDigit);
}

double targetIrradiance(const MeasuredEngagement& engagement, const Moment& moment) {
    if (engagement.radiometry() == nullptr)
        return std::nan("");
    const Triple r = fromTargetToThreat(moment);
    return orUndefined(engagement.radiometry()->emissionAt(moment.time()) / dot(r, r));
}

double targetContrast(const MeasuredEngagement& engagement, const Moment& moment) {
    const TargetRadiometry* const radiometry = engagement.radiometry();
    if (radiometry == nullptr)
        return std::nan("");
    const double time = moment.time();
    return squareCentimetresPer(engagement.unit()) *
           (radiometry->emissionAt(time) - radiometry->background() * radiometry->areaAt(time));
}

double flareJamToSignal(const MeasuredEngagement& engagement, const FlareMoment& flare) {
    return ratioToTarget(engagement, engagement.flares().brightnesses[flare.row], flare.moment);
}

double jamToSignal(const MeasuredEngagement& engagement, const Moment& moment) {
    return ratioToTarget(engagement, flareBrightnessInField(engagement, moment), moment);
}

RadiometricResults radiometricResults(const MeasuredEngagement& engagement) {
    RadiometricResults results;
    if (engagement.radiometry() == nullptr)
        return results;
    double area = 0.0; // under the curve of the intensity
    double seconds = 0.0;
    double before = std::nan("");
    for (std::size_t sample = 0; sample < engagement.samples().size(); ++sample) {
        const Moment moment = engagement.on(sample);
        const double time = engagement.samples()[sample].time;
        const double intensity = targetIntensity(engagement, moment);
        if (sample > 0 && std::isfinite(before + intensity)) {
            const double step = time - engagement.samples()[sample - 1].time;
            area += step * (before + intensity) / 2.0;
            seconds += step;
        }
        before = intensity;
        if (std::isnan(results.intensityAtFirstFlare) && engagement.tracks().countAt(sample) > 0)
            results.intensityAtFirstFlare = intensity;
        const double ratio = jamToSignal(engagement, moment);
        if (ratio > 1.0 && std::isnan(results.outshoneTime))
            results.outshoneTime = time;
        if (ratio > results.greatestRatio || (std::isnan(results.greatestRatio) && !std::isnan(ratio))) {
            results.greatestRatio = ratio;
            results.greatestRatioTime = time;
        }
    }
    if (seconds > 0.0)
        results.meanIntensity = area / seconds;
    return results;
}
} // namespace sorvane
