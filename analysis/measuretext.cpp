// How times, lengths, speeds and angles are written, for the viewer and the command alike: the one place of their
// formats and of the names of their units.
#include "measuretext.h"

#include <cmath>

#include <QList>

namespace sorvane {
namespace {
constexpr double kMetresPerFoot = 0.3048; // international foot, exact

QString symbolOf(LengthUnit unit) {
    switch (unit) {
    case LengthUnit::Feet:
        return QStringLiteral("ft");
    case LengthUnit::Metres:
        return QStringLiteral("m");
    case LengthUnit::Unstated:
        break;
    }
    return QStringLiteral("units");
}

QString fixed(double value, int decimals, const QString& ending) {
    // Rounding can leave a negative zero, which nobody wants to read.
    QString text = QString::number(value, 'f', decimals);
    if (text.startsWith(u'-') && text.toDouble() == 0.0)
        text.remove(0, 1);
    return text + ending;
}

// Short times keep their digits, which three decimals would lose.
QString shortTimeText(double seconds) {
    constexpr double kShort = 0.1;
    return seconds != 0.0 && std::abs(seconds) < kShort ? QString::number(seconds, 'g', 4) + QStringLiteral(" s")
                                                        : timeText(seconds);
}

struct Ending {
    QString ending;
    QString (*text)(double value);
};

template <LengthUnit unit> QString lengthIn(double value) {
    return lengthText(value, unit);
}
template <LengthUnit unit> QString speedIn(double value) {
    return speedText(value, unit);
}
QString radianceText(double value) {
    return QString::number(value, 'g', 4) + QStringLiteral(" W/cm²/sr");
}

template <LengthUnit unit> QList<Ending> endingsOf() {
    return {{lengthNameEnding(unit), lengthIn<unit>}, {speedNameEnding(unit), speedIn<unit>}};
}

const QList<Ending>& knownEndings() {
    static const QList<Ending> endings = endingsOf<LengthUnit::Unstated>() + endingsOf<LengthUnit::Feet>() +
                                         endingsOf<LengthUnit::Metres>() +
                                         QList<Ending>{
                                             {QStringLiteral("_s"), shortTimeText},
                                             {QStringLiteral("_deg"), angleText},
                                             {QStringLiteral("_W_per_cm2_sr"), radianceText}};
    return endings;
}
} // namespace

double metresPer(LengthUnit unit) {
    return unit == LengthUnit::Feet ? kMetresPerFoot : 1.0;
}

QString timeText(double seconds) {
    return fixed(seconds, 3, QStringLiteral(" s"));
}

QString lengthText(double value, LengthUnit unit) {
    return fixed(value, 1, u' ' + symbolOf(unit));
}

QString speedText(double value, LengthUnit unit) {
    return fixed(value, 1, u' ' + symbolOf(unit) + QStringLiteral("/s"));
}

QString angleText(double degrees) {
    return fixed(degrees, 1, QStringLiteral("°"));
}

QString lengthNameEnding(LengthUnit unit) {
    return u'_' + symbolOf(unit);
}

QString speedNameEnding(LengthUnit unit) {
    return lengthNameEnding(unit) + QStringLiteral("_per_s");
}

NamedMeasure namedMeasure(const QString& nameWithEnding, double value) {
    // The longest ending counts: a speed's name ends like a time's.
    const Ending* found = nullptr;
    for (const Ending& known : knownEndings())
        if (nameWithEnding.endsWith(known.ending) && (found == nullptr || known.ending.size() > found->ending.size()))
            found = &known;
    if (found == nullptr)
        return {nameWithEnding, QString::number(value, 'g', 7)};
    return {nameWithEnding.chopped(found->ending.size()), found->text(value)};
}
} // namespace sorvane
