// How times, lengths, speeds and angles are written, for the viewer and the command alike: the one place of their
// formats and of the names of their units.
#include "measuretext.h"

#include <algorithm>
#include <cmath>

#include <QList>

namespace sorvane {
namespace {
constexpr double kMetresPerFoot = 0.3048; // international foot, exact

QString fixed(double value, int decimals, const QString& ending) {
    // Rounding can leave a negative zero, which nobody wants to read.
    QString text = QString::number(value, 'f', decimals);
    if (text.startsWith(u'-') && text.toDouble() == 0.0)
        text.remove(0, 1);
    return text + ending;
}

// So many decimals that four digits count, the last ones only as far as they are needed beyond `least` decimals.
constexpr int kCountingDigits = 4;
int countingDecimals(double value, int least) {
    if (value == 0.0 || !std::isfinite(value))
        return least;
    const int beforePoint = static_cast<int>(std::floor(std::log10(std::abs(value)))) + 1;
    return std::max(least, kCountingDigits - beforePoint);
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
QString intensityText(double value) {
    return QString::number(value, 'g', 4) + QStringLiteral(" W/sr");
}
QString irradianceText(double value) {
    return QString::number(value, 'g', 4) + QStringLiteral(" W/cm²");
}

template <LengthUnit unit> QString accelerationIn(double value) {
    return fixed(value, 1, u' ' + unitSymbol(unit) + QStringLiteral("/s²"));
}
QString angularRateText(double value) {
    return fixed(value, countingDecimals(value, 1), QStringLiteral("°/s"));
}
QString loadText(double value) {
    return fixed(value, 2, QStringLiteral(" g"));
}

template <LengthUnit unit> QList<Ending> endingsOf() {
    return {
        {lengthNameEnding(unit), lengthIn<unit>},
        {speedNameEnding(unit), speedIn<unit>},
        {accelerationNameEnding(unit), accelerationIn<unit>}};
}

const QList<Ending>& knownEndings() {
    static const QList<Ending> endings = endingsOf<LengthUnit::Unstated>() + endingsOf<LengthUnit::Feet>() +
                                         endingsOf<LengthUnit::Metres>() +
                                         QList<Ending>{
                                             {QStringLiteral("_s"), timeText},
                                             {QStringLiteral("_deg"), angleText},
                                             {QStringLiteral("_deg_per_s"), angularRateText},
                                             {QStringLiteral("_g"), loadText},
                                             {QStringLiteral("_W_per_sr"), intensityText},
                                             {QStringLiteral("_W_per_cm2"), irradianceText},
                                             {QStringLiteral("_W_per_cm2_sr"), radianceText}};
    return endings;
}
} // namespace

double metresPer(LengthUnit unit) {
    return unit == LengthUnit::Feet ? kMetresPerFoot : 1.0;
}

QString unitSymbol(LengthUnit unit) {
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

QString timeText(double seconds) {
    constexpr int kDecimals = 3;
    constexpr int kMostDecimals = 9; // what is less is noise
    constexpr double kShort = 0.1;   // three decimals would lose digits of what is shorter
    const int decimals =
        std::abs(seconds) < kShort ? std::min(countingDecimals(seconds, kDecimals), kMostDecimals) : kDecimals;
    QString text = fixed(seconds, decimals, {});
    while (text.endsWith(u'0') && text.size() - text.indexOf(u'.') - 1 > kDecimals)
        text.chop(1);
    return text + QStringLiteral(" s");
}

QString lengthText(double value, LengthUnit unit) {
    constexpr int kMostDecimals = 7;
    const int decimals = countingDecimals(value, 1);
    return decimals > kMostDecimals ? QString::number(value, 'g', kCountingDigits) + u' ' + unitSymbol(unit)
                                    : fixed(value, decimals, u' ' + unitSymbol(unit));
}

QString speedText(double value, LengthUnit unit) {
    return fixed(value, 1, u' ' + unitSymbol(unit) + QStringLiteral("/s"));
}

QString angleText(double degrees) {
    return fixed(degrees, 1, QStringLiteral("°"));
}

QString lengthNameEnding(LengthUnit unit) {
    return u'_' + unitSymbol(unit);
}

QString speedNameEnding(LengthUnit unit) {
    return lengthNameEnding(unit) + QStringLiteral("_per_s");
}

QString accelerationNameEnding(LengthUnit unit) {
    return lengthNameEnding(unit) + QStringLiteral("_per_s2");
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
