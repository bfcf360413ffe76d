// The lines of the read-out: what view and pictures say of an encounter at a time.
#include "readouttext.h"

#include <algorithm>
#include <cmath>

#include "clocknumbers.h"
#include "measure.h"

namespace sorvane {
namespace {
constexpr int kLabelWidth = 18; // characters

// The box of the time shows whole milliseconds, of which the one nearest to an end stands for it.
double boundedTime(std::span<const Sample> samples, double time) {
    const double bounded = std::clamp(time, samples.front().time, samples.back().time);
    return std::abs(bounded - time) <= kSecondsPerSliderStep / 2.0 ? bounded : time;
}

// What lies nearest to the seeker's axis within its field, and how far off: "flare 3, 0.4°".
QString nearestText(const MeasuredEngagement& engagement, double time) {
    const auto text = [&](const char* name) {
        const Measure& measure = *findMeasure(name);
        return valueText(engagement, measure, valueAt(engagement, measure, time));
    };
    const QString object = text("nearest");
    return object.isEmpty() ? QStringLiteral("nothing in the field")
                            : QStringLiteral("%1, %2").arg(object, text("nearest-off-boresight"));
}

QStringList encounterLines(const ReadoutFacts& facts) {
    const std::span<const Sample> samples = facts.measured->samples();
    const LengthUnit unit = facts.measured->unit();
    const double time = boundedTime(samples, facts.time);
    const std::optional<Encounter> now = encounterAt(samples, time);
    QStringList lines{readoutLine("Engagement", facts.engagement)};
    if (!now && facts.time < samples.front().time)
        lines << readoutLine("Encounter", QStringLiteral("begins at %1").arg(timeText(samples.front().time)));
    else if (!now)
        lines << readoutLine("Encounter", QStringLiteral("ended at %1").arg(timeText(samples.back().time)));
    lines << readoutLine("Range", now ? lengthText(now->range, unit) : noNumber())
          << readoutLine("Closing speed", now ? speedText(now->closingSpeed, unit) : noNumber());
    if (facts.closest)
        lines << readoutLine(
            "Closest approach",
            QStringLiteral("%1 at %2").arg(lengthText(facts.closest->range, unit), timeText(facts.closest->time)));
    return lines << readoutLine("Aspect angle", now ? angleText(now->aspectDegrees) : noNumber())
                 << readoutLine("Nearest to axis", now ? nearestText(*facts.measured, time) : noNumber());
}
} // namespace

QString noNumber() {
    return QStringLiteral("–");
}

QString readoutLine(const char* label, const QString& value) {
    return QString::fromLatin1(label).leftJustified(kLabelWidth) + value;
}

QStringList readoutLines(const ReadoutFacts& facts) {
    QStringList lines{readoutLine("Time", timeText(facts.time))};
    if (facts.measured != nullptr)
        lines << encounterLines(facts);
    return lines << readoutLine("View", facts.view);
}
} // namespace sorvane
