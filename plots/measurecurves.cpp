// Makes curves of the measures of engagements.
#include "measurecurves.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "withoutnoise.h"
#include "writtenvalues.h"

namespace sorvane {
namespace {
constexpr double kGap = std::numeric_limits<double>::quiet_NaN();
constexpr int kFlareColours = 7;             // the same in all strips; none is the target's
constexpr std::size_t kMostNamedFlares = 12; // more are one curve of many lines
constexpr const char* kOffBoresight = "off-boresight";
constexpr const char* kHalfField = "half-field";
constexpr double kMostHalfFields = 4.0; // of off-boresight angles; what has been passed goes up to 180°

// The measures that a strip shows.
std::vector<const Measure*> companions(const Measure& measure) {
    if (&measure == findMeasure(kOffBoresight))
        return {&measure, findMeasure("flare-off-boresight"), findMeasure(kHalfField)};
    return {&measure};
}

double onAxis(double time, double zero, CurveDigits digits) {
    return digits == CurveDigits::All ? time - zero
                                      : withoutNoise(time - zero, std::max(std::abs(time), std::abs(zero)));
}

// The curves of one engagement, in one strip.
class CurveMaker {
public:
    CurveMaker(const PlottedEngagement& engagement, double zero, bool isNamed, CurveDigits digits, PlotStrip& strip)
        : engagement_(engagement), measured_(*engagement.measured), zero_(zero), isNamed_(isNamed), digits_(digits),
          strip_(strip) {}

    void add(const Measure& measure, bool isDashed) {
        if (measure.isOfMoments())
            addOfMoments(measure, isDashed);
        else if (measured_.tracks().size() <= kMostNamedFlares)
            for (std::size_t track = 0; track < measured_.tracks().size(); ++track) {
                PlotCurve curve = newCurve(flareName(track), isDashed);
                curve.colour = 1 + static_cast<int>(track) % kFlareColours;
                addTrack(measure, track, curve);
                strip_.curves.push_back(std::move(curve));
            }
        else
            addAllTracks(measure, isDashed);
    }

private:
    QString flareName(std::size_t track) const { return QStringLiteral("flare %1").arg(measured_.tracks().id(track)); }

    PlotCurve newCurve(const QString& name, bool isDashed) const {
        return {
            .name = isNamed_ ? QStringLiteral("%1: %2").arg(engagement_.name, name) : name,
            .colour = static_cast<int>(strip_.curves.size()),
            .isDashed = isDashed};
    }

    void addOfMoments(const Measure& measure, bool isDashed) {
        PlotCurve curve = newCurve(nameOf(measure), isDashed);
        const std::span<const Sample> samples = measured_.samples();
        const std::vector<double> values =
            digits_ == CurveDigits::All ? valuesOnSamples(measured_, measure) : writtenOnSamples(measured_, measure);
        curve.points.reserve(values.size());
        for (std::size_t i = 0; i < values.size(); ++i)
            curve.points.push_back({onAxis(samples[i].time, zero_, digits_), values[i]});
        curve.ends.push_back(curve.points.size());
        if (&measure == findMeasure(kHalfField)) { // a limit rather than something measured
            curve.colour = -1;
            curve.isDashed = true;
        }
        strip_.curves.push_back(std::move(curve));
    }

    static QString nameOf(const Measure& measure) {
        return QLatin1String(measure.name) == QLatin1String(kOffBoresight) ? QStringLiteral("target")
                                                                           : QString::fromLatin1(measure.name);
    }

    // Where the flare is out in a sample between, the line has a gap.
    void addTrack(const Measure& measure, std::size_t track, PlotCurve& curve) const {
        const std::span<const FlareTracks::Number> rows = measured_.tracks().rows(track);
        const std::vector<double> values = valuesOnRows(measured_, measure, rows);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            const std::size_t sample = measured_.tracks().sampleOf(rows[i]);
            const double time = onAxis(measured_.samples()[sample].time, zero_, digits_);
            if (i > 0 && sample > measured_.tracks().sampleOf(rows[i - 1]) + 1)
                curve.points.push_back({time, kGap});
            curve.points.push_back({time, digits_ == CurveDigits::All ? values[i] : writtenValue(values[i])});
        }
        curve.ends.push_back(curve.points.size());
    }

    void addAllTracks(const Measure& measure, bool isDashed) {
        const std::size_t count = measured_.tracks().size();
        PlotCurve curve = newCurve(QStringLiteral("%1 flares").arg(count), isDashed);
        for (std::size_t track = 0; track < count; ++track)
            addTrack(measure, track, curve);
        strip_.curves.push_back(std::move(curve));
    }

    const PlottedEngagement& engagement_;
    const MeasuredEngagement& measured_;
    double zero_;
    bool isNamed_;
    CurveDigits digits_;
    PlotStrip& strip_;
};

QString timeTitle(PlotAlignment alignment) {
    switch (alignment) {
    case PlotAlignment::Start:
        break;
    case PlotAlignment::FirstFlare:
        return QStringLiteral("time from the first flare (s)");
    case PlotAlignment::ClosestApproach:
        return QStringLiteral("time from the closest approach (s)");
    }
    return QStringLiteral("time (s)");
}

double alignedTime(const MeasuredEngagement& engagement, PlotAlignment alignment) {
    if (alignment == PlotAlignment::Start || engagement.samples().empty())
        return 0.0;
    const EngagementResults results = resultsOf(engagement);
    const double time = alignment == PlotAlignment::FirstFlare ? results.firstFlareTime : results.closest.time;
    return std::isfinite(time) ? time : 0.0;
}

} // namespace

std::vector<const Measure*> usualPlotMeasures() {
    std::vector<const Measure*> measures;
    for (const char* const name : {"range", "closing-speed", kOffBoresight, "flare-band-1"})
        measures.push_back(findMeasure(name));
    return measures;
}

bool isPlottable(const Measure& measure) {
    return measure.isOfMoments() || measure.isOfFlareMoments();
}

PlotDocument plotOf(
    std::span<const PlottedEngagement> engagements, std::span<const Measure* const> measures, PlotAlignment alignment,
    CurveDigits digits) {
    PlotDocument document;
    document.timeTitle = timeTitle(alignment);
    if (engagements.empty())
        return document;
    std::vector<double> zeros;
    document.times = {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};
    for (const PlottedEngagement& engagement : engagements) {
        const double zero = zeros.emplace_back(alignedTime(*engagement.measured, alignment));
        const std::span<const Sample> samples = engagement.measured->samples();
        if (samples.empty())
            continue;
        document.times.begin = std::min(document.times.begin, onAxis(samples.front().time, zero, digits));
        document.times.end = std::max(document.times.end, onAxis(samples.back().time, zero, digits));
    }
    if (!(document.times.begin <= document.times.end))
        document.times = {};
    document.title = engagements.front().name;
    document.zero = zeros.front();
    document.marks = engagements.front().events;
    for (EngagementEvent& mark : document.marks)
        mark.time -= document.zero;
    for (const Measure* const measure : measures) {
        PlotStrip& strip = document.strips.emplace_back();
        strip.measure = measure;
        strip.title = QString::fromLatin1(measure->name);
        strip.unit = unitSymbol(measure->unit, engagements.front().measured->unit());
        for (std::size_t i = 0; i < engagements.size(); ++i) {
            if (measure == findMeasure(kOffBoresight))
                strip.greatest = kMostHalfFields * engagements[i].measured->halfFieldDegrees();
            for (const Measure* const shown : companions(*measure))
                CurveMaker(engagements[i], zeros[i], engagements.size() > 1, digits, strip).add(*shown, i > 0);
        }
    }
    return document;
}
} // namespace sorvane
