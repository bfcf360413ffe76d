// How times, lengths, speeds and angles are written, for the viewer and the command alike: the one place of their
// formats and of the names of their units.
#include "measuretext.h"

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
