// The one table of measures.
#include <algorithm>
#include <cmath>

#include "measure.h"
#include "measureformulas.h"

namespace sorvane {
namespace formulas {
namespace {
double orUndefined(bool isDefined, double value) {
    return isDefined ? value : std::nan("");
}
} // namespace

double azimuth(const MeasuredEngagement&, const Moment& m) {
    const Triple d = inTargetAxes(m, fromTargetToThreat(m));
    return orUndefined(d[0] != 0.0 || d[1] != 0.0, std::atan2(d[1], d[0]) * kDegreesPerRadian);
}

double elevation(const MeasuredEngagement&, const Moment& m) {
    const Triple d = inTargetAxes(m, fromTargetToThreat(m));
    const double level = std::hypot(d[0], d[1]);
    return orUndefined(level != 0.0 || d[2] != 0.0, std::atan2(-d[2], level) * kDegreesPerRadian);
}

double nearest(const MeasuredEngagement& e, const Moment& m) {
    const std::optional<FieldObject> object = nearestToAxis(e, m);
    if (!object)
        return std::nan("");
    return object->track ? static_cast<double>(*object->track) + 1.0 : 0.0;
}

double nearestOffBoresight(const MeasuredEngagement& e, const Moment& m) {
    const std::optional<FieldObject> object = nearestToAxis(e, m);
    return object ? object->offBoresightDegrees : std::nan("");
}

namespace {
double decoyed(const EngagementResults& results) {
    return results.field.isDecoyed ? static_cast<double>(*results.field.isDecoyed) : std::nan("");
}
} // namespace
} // namespace formulas

namespace {
using namespace formulas;
using enum MeasureUnit;
constexpr BodyPosition kTarget = &Sample::targetPosition;
constexpr BodyPosition kThreat = &Sample::threatPosition;

const Measure kMeasures[] = {
    {"range", "Distance of target and threat", "|r|", Length, overMoments<range>},
    {"closing-speed", "Speed with which the range shrinks", "-r·v/|r|", Speed, overMoments<closing>},
    {"line-of-sight-rate", "Rate at which the line from threat to target turns", "|r×v|/|r|²", DegreesPerSecond,
     overMoments<lineOfSightRate>},
    {"threat-azimuth", "Direction to the threat in the target's body axes, from its nose to the right",
     "atan2(y, x), x ahead, y to the right, z down", Degrees, overMoments<azimuth>},
    {"threat-elevation", "Direction to the threat in the target's body axes, above the plane of nose and wings",
     "atan2(-z, √(x²+y²))", Degrees, overMoments<elevation>},
    {"aspect", "Angle at the target from its nose to the threat: 0 is nose-on, 180 tail-on", "acos(x/|r|)", Degrees,
     overMoments<aspectAngle>},
    {"lead-angle", "Angle between the threat's velocity and the line of sight to the target", "angle(u, -r)", Degrees,
     overMoments<leadAngle>},
    {"zero-effort-miss", "How close the two would come if both kept their velocities", "|r×v|/|v|", Length,
     overMoments<zeroEffortMiss>},
    {"time-to-go", "Time until they would be closest if both kept their velocities; negative once that is past",
     "-r·v/|v|²", Seconds, overMoments<timeToGo>},
    {"target-speed", "Speed of the target, by central differences", "|dp/dt|", Speed, overMoments<speed<kTarget>>},
    {"threat-speed", "Speed of the threat, by central differences", "|dp/dt|", Speed, overMoments<speed<kThreat>>},
    {"target-altitude", "Height of the target", "-z", Length, overMoments<altitude<kTarget>>},
    {"threat-altitude", "Height of the threat", "-z", Length, overMoments<altitude<kThreat>>},
    {"target-lateral-acceleration",
     "Acceleration of the target across its path, on the circle through where it is and was and will be 0.1 s away",
     "v²/r of the circle", Acceleration, overMoments<lateralAcceleration<kTarget>>},
    {"threat-lateral-acceleration",
     "Acceleration of the threat across its path, on the circle through where it is and was and will be 0.1 s away",
     "v²/r of the circle", Acceleration, overMoments<lateralAcceleration<kThreat>>},
    {"target-load-factor", "The target's lateral acceleration in g, its weight left out; needs the unit of length",
     "v²/r/(9.80665 m/s²)", Gravities, overMoments<loadFactor<kTarget>>},
    {"threat-load-factor", "The threat's lateral acceleration in g, its weight left out; needs the unit of length",
     "v²/r/(9.80665 m/s²)", Gravities, overMoments<loadFactor<kThreat>>},
    {"off-boresight", "Angle at the threat from the gyro's axis, along which the gyro view looks, to the target",
     "angle(a, -r)", Degrees, overMoments<offBoresight>},
    {"half-field", "Half of the seeker's field of view, which off-boresight angles compare with", "field/2", Degrees,
     overMoments<halfField>},
    {"flares-burning", "Number of flares that burn", "count", Number, overMoments<flaresBurning>},
    {"nearest", "What lies nearest to the gyro's axis within the field of view: geometry, not what the seeker goes by",
     "least off-boresight angle of those up to the half field", Object, overMoments<nearest>},
    {"nearest-off-boresight", "Off-boresight angle of what lies nearest to the axis within the field of view",
     "the least of those up to the half field", Degrees, overMoments<nearestOffBoresight>},
    {"target-intensity",
     "Radiant intensity of the target towards the threat, from its signature; needs the unit of length",
     "I = Σ L A cos θ over what can be seen", RadiantIntensity, overMoments<ownIntensity>, MeasureNeed::Signature},
    {"target-intensity-band-1", "The same in the near infrared, where files of band 1 lie beside the run's",
     "Σ L A cos θ", RadiantIntensity, overMoments<intensityInBand<'1'>>, MeasureNeed::Bands},
    {"target-intensity-band-4", "The same in the mid infrared, where files of band 4 lie beside the run's",
     "Σ L A cos θ", RadiantIntensity, overMoments<intensityInBand<'4'>>, MeasureNeed::Bands},
    {"target-intensity-band-6", "The same in the visible, where files of band 6 lie beside the run's", "Σ L A cos θ",
     RadiantIntensity, overMoments<intensityInBand<'6'>>, MeasureNeed::Bands},
    {"target-irradiance", "Irradiance by the target at the seeker, the air on the way left out", "I/|r|²", Irradiance,
     overMoments<targetIrradiance>, MeasureNeed::Signature},
    {"target-contrast",
     "Radiant intensity by which the target is brighter than the background that it hides, the sky; needs the unit of "
     "length",
     "I - L(sky) A", RadiantIntensity, overMoments<targetContrast>, MeasureNeed::Signature},
    {"jam-to-signal",
     "Intensity of all flares in the field of view over that of the target towards the threat; needs the unit of "
     "length",
     "Σ J/I", Number, overMoments<jamToSignal>, MeasureNeed::Signature},

    {"flare-age", "Time since the flare appeared, anew when it comes back", "t - t(appeared)", Seconds,
     overFlares<flareAge>},
    {"flare-range", "Distance of the flare from the threat", "|f - threat|", Length, overFlares<flareRange>},
    {"flare-distance", "Distance of the flare from the target", "|f - target|", Length, overFlares<flareDistance>},
    {"flare-off-boresight", "Angle at the threat from the gyro's axis to the flare", "angle(a, f - threat)", Degrees,
     overFlares<flareOffBoresight>},
    {"flare-brightness", "Brightness of the flare, by which it is drawn; as on the last sample", "word 6", Number,
     overFlares<flareBrightness>},
    {"flare-band-1", "Intensity of the flare in band 1, which it is also drawn as large as", "word 10", Number,
     overFlares<flareBand<0>>},
    {"flare-band-2", "Intensity of the flare in band 2; that of band 1 where there are fewer than three", "word 11",
     Number, overFlares<flareBand<1>>},
    {"flare-band-3", "Intensity of the flare in band 3; that of band 1 where there are fewer than three", "word 12",
     Number, overFlares<flareBand<2>>},
    {"flare-jam-to-signal",
     "Intensity of the flare, its brightness in W/sr, over that of the target towards the threat; needs the unit of "
     "length",
     "J/I", Number, overFlares<flareJamToSignal>, MeasureNeed::Signature},

    {"closest-approach", "Least distance of target and threat, solved between the samples", "min |r|", Length,
     [](const EngagementResults& results) {
         return results.closest.range;
     }},
    {"closest-approach-time", "Time of the closest approach", "t at min |r|", Seconds,
     [](const EngagementResults& results) {
         return results.closest.time;
     }},
    {"closest-approach-closing-speed",
     "Closing speed at the closest approach: 0 where the range has a minimum, more where the samples end before",
     "-r·v/|r|", Speed,
     [](const EngagementResults& results) {
         return results.atClosest.closingSpeed;
     }},
    {"closest-approach-relative-speed", "Speed of the threat against the target at the closest approach", "|v|", Speed,
     [](const EngagementResults& results) {
         return results.relativeSpeedAtClosest;
     }},
    {"closest-approach-aspect", "Aspect at the closest approach", "acos(x/|r|)", Degrees,
     [](const EngagementResults& results) {
         return results.atClosest.aspectDegrees;
     }},
    {"first-flare-time", "Time of the first sample with a flare", "min t", Seconds,
     [](const EngagementResults& results) {
         return results.firstFlareTime;
     }},
    {"target-time-in-field",
     "For how long the target lies in the field of view, its angle changing evenly between samples", "Σ Δt", Seconds,
     [](const EngagementResults& results) {
         return results.field.target;
     }},
    {"target-last-nearest", "Time of the last sample on which the target is nearest to the axis within the field",
     "max t", Seconds,
     [](const EngagementResults& results) {
         return results.field.targetLastNearest.value_or(std::nan(""));
     }},
    {"decoyed", "Whether a flare is nearest to the axis on the last sample with anything in the field",
     "geometry, not what the seeker goes by", Truth, decoyed},
    {"target-mean-intensity", "Mean over time of the target's intensity; needs the unit of length", "∫ I dt / Δt",
     RadiantIntensity, [](const EngagementResults& results) { return results.radiometric.meanIntensity; },
     MeasureNeed::Signature},
    {"target-intensity-at-first-flare",
     "Intensity of the target on the first sample with a flare; needs the unit of length", "I(t)", RadiantIntensity,
     [](const EngagementResults& results) { return results.radiometric.intensityAtFirstFlare; },
     MeasureNeed::Signature},
    {"greatest-jam-to-signal",
     "Greatest ratio on a sample of the flares in the field of view to the target; needs the unit of length",
     "max Σ J/I", Number, [](const EngagementResults& results) { return results.radiometric.greatestRatio; },
     MeasureNeed::Signature},
    {"greatest-jam-to-signal-time", "Time of the greatest ratio of flares to target, the first of several", "t at max",
     Seconds, [](const EngagementResults& results) { return results.radiometric.greatestRatioTime; },
     MeasureNeed::Signature},
    {"target-outshone-time", "Time of the first sample on which the flares in the field of view outshine the target",
     "min t with Σ J/I > 1", Seconds, [](const EngagementResults& results) { return results.radiometric.outshoneTime; },
     MeasureNeed::Signature},

    {"flare-time-in-field",
     "For how long the flare lies in the field of view, its angle changing evenly between samples", "Σ Δt", Seconds,
     [](const EngagementResults& results, std::size_t track) {
         return results.field.flares[track];
     }},
};

QString nameEnding(MeasureUnit measureUnit, LengthUnit unit) {
    switch (measureUnit) {
    case Seconds:
        return QStringLiteral("_s");
    case Length:
        return lengthNameEnding(unit);
    case Speed:
        return speedNameEnding(unit);
    case Acceleration:
        return accelerationNameEnding(unit);
    case Gravities:
        return QStringLiteral("_g");
    case Degrees:
        return QStringLiteral("_deg");
    case DegreesPerSecond:
        return QStringLiteral("_deg_per_s");
    case RadiantIntensity:
        return QStringLiteral("_W_per_sr");
    case Irradiance:
        return QStringLiteral("_W_per_cm2");
    case Number:
    case Truth:
    case Object:
        break;
    }
    return {};
}
} // namespace

std::span<const Measure> allMeasures() {
    return kMeasures;
}

const Measure* findMeasure(std::string_view name) {
    const auto found = std::ranges::find(kMeasures, name, &Measure::name);
    return found == std::end(kMeasures) ? nullptr : found;
}

const Measure* withoutUnit(std::span<const Measure* const> measures, LengthUnit unit) {
    // What goes by metres, the areas of facets among them.
    const auto needsUnit = [](const Measure* measure) {
        return measure->unit == MeasureUnit::Gravities ||
               (measure->needsRadiometry() && measure->unit != MeasureUnit::Irradiance);
    };
    const auto found = std::ranges::find_if(measures, needsUnit);
    return unit != LengthUnit::Unstated || found == measures.end() ? nullptr : *found;
}

const char* kindOf(const Measure& measure) {
    constexpr const char* kKinds[] = {"moment", "flare moment", "engagement", "flare"}; // by the alternatives
    return kKinds[measure.evaluate.index()];
}

const char* needOf(const Measure& measure) {
    return measure.needsRadiometry() ? "signature" : "";
}

QString columnName(const Measure& measure, LengthUnit unit) {
    return QString::fromLatin1(measure.name).replace(u'-', u'_') + nameEnding(measure.unit, unit);
}

QString unitSymbol(MeasureUnit measureUnit, LengthUnit unit) {
    if (measureUnit == Degrees || measureUnit == DegreesPerSecond)
        return measureUnit == Degrees ? QStringLiteral("°") : QStringLiteral("°/s");
    QString symbol = nameEnding(measureUnit, unit).mid(1);
    return symbol.replace(QStringLiteral("_per_"), QStringLiteral("/")).replace(u'2', u'²');
}

QString valueText(const MeasuredEngagement& engagement, const Measure& measure, double value) {
    if (std::isnan(value))
        return {};
    if (measure.unit == Object)
        return objectName(engagement.tracks(), value);
    return namedMeasure(columnName(measure, engagement.unit()), value).text;
}

QString objectName(const FlareTracks& tracks, double number) {
    if (!(number >= 0.0 && number <= static_cast<double>(tracks.size())))
        return {};
    return number == 0.0 ? QStringLiteral("target")
                         : QStringLiteral("flare %1").arg(tracks.id(static_cast<std::size_t>(number) - 1));
}
} // namespace sorvane
