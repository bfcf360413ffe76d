// The one table of measures: what they are called, what they mean and how they are worked out, for the command, the
// read-outs and the plots alike.
#pragma once

#include <span>
#include <string_view>
#include <variant>
#include <vector>

#include <QString>

#include "engagementresults.h"
#include "measuredengagement.h"

namespace sorvane {
enum class MeasureUnit {
    Number,
    Seconds,
    Length, // the trajectory's own
    Speed,
    Acceleration,
    Gravities, // of standard gravity
    Degrees,
    DegreesPerSecond,
    RadiantIntensity, // W/sr
    Irradiance,       // W/cm²
    Truth,            // 1 or 0
    Object            // 0 for the target, n for the flare that is the n-th to appear
};

// What a measure is worked out from: all of a span at once.
using MomentFormula = void (*)(const MeasuredEngagement&, std::span<const Moment>, std::span<double>);
using FlareFormula = void (*)(const MeasuredEngagement&, std::span<const FlareMoment>, std::span<double>);
using ResultFormula = double (*)(const EngagementResults&);
using FlareResultFormula = double (*)(const EngagementResults&, std::size_t track);

// What a measure needs besides the trajectory: then it is undefined unless the engagement has its radiometry, and left
// out where not asked for by name, since that takes long.
enum class MeasureNeed {
    Nothing,
    Signature, // of the target, in the band of the files that the trajectory names
    Bands      // in others
};

// NaN is what is undefined.
struct Measure {
    const char* name;       // "off-boresight"
    const char* definition; // a sentence without its full stop
    const char* formula;    // r is from target to threat, v its rate, u the threat's velocity, a the gyro's axis
    MeasureUnit unit;
    std::variant<MomentFormula, FlareFormula, ResultFormula, FlareResultFormula> evaluate;
    MeasureNeed need = MeasureNeed::Nothing;

    bool isOfMoments() const { return std::holds_alternative<MomentFormula>(evaluate); }
    bool isOfFlareMoments() const { return std::holds_alternative<FlareFormula>(evaluate); }
    bool isOfEngagement() const { return std::holds_alternative<ResultFormula>(evaluate); }
    bool isOfFlares() const { return std::holds_alternative<FlareResultFormula>(evaluate); }
    bool needsRadiometry() const { return need != MeasureNeed::Nothing; }
};

// By kind, in the order of the alternatives above.
std::span<const Measure> allMeasures();
// Null when there is none of that name.
const Measure* findMeasure(std::string_view name);
// The first measure that stays empty since the unit of length isn't known; null where none does.
const Measure* withoutUnit(std::span<const Measure* const> measures, LengthUnit unit);

// "moment", "flare moment", "engagement" or "flare", as records and listings tell of what the measure is.
const char* kindOf(const Measure& measure);
// "signature" where the measure needs the target's; empty otherwise.
const char* needOf(const Measure& measure);
// The measure's name with _ for - and the ending that tells its unit: "off_boresight_deg". See namedMeasure.
QString columnName(const Measure& measure, LengthUnit unit);
// "m/s", "°"; empty without one.
QString unitSymbol(MeasureUnit measureUnit, LengthUnit unit);
// A value with its unit, for people: "12.3°", "flare 7"; empty when it is undefined.
QString valueText(const MeasuredEngagement& engagement, const Measure& measure, double value);
// "target", "flare 7", by the number that a measure of objects gives; empty without one.
QString objectName(const FlareTracks& tracks, double number);

// Of a measure of moments: on all samples, and at any times, in any order; NaN outside the samples.
std::vector<double> valuesOnSamples(const MeasuredEngagement& engagement, const Measure& measure);
std::vector<double>
valuesAt(const MeasuredEngagement& engagement, const Measure& measure, std::span<const double> times);
double valueAt(const MeasuredEngagement& engagement, const Measure& measure, double time);

// Of a measure of flare moments: on some rows of the flares, each on its sample, such as a track's, or on all; at
// times, NaN while the flare is out.
std::vector<double>
valuesOnRows(const MeasuredEngagement& engagement, const Measure& measure, std::span<const FlareTracks::Number> rows);
std::vector<double> valuesOnAllRows(const MeasuredEngagement& engagement, const Measure& measure);
std::vector<double> flareValuesAt(
    const MeasuredEngagement& engagement, const Measure& measure, std::size_t track, std::span<const double> times);

double valueOf(const EngagementResults& results, const Measure& measure);
double flareValueOf(const EngagementResults& results, const Measure& measure, std::size_t track);
} // namespace sorvane
