// How times, lengths, speeds and angles are written, for the viewer and the command alike: the one place of their
// formats and of the names of their units.
#pragma once

#include <QString>

namespace sorvane {
// What one of a trajectory's units is. The files don't say; who knows may.
enum class LengthUnit { Unstated, Feet, Metres };

double metresPer(LengthUnit unit);   // 1 for an unstated one
QString unitSymbol(LengthUnit unit); // "m", "ft", "units"

QString timeText(double seconds);                  // "12.345 s"; short ones have up to four digits: "0.00125 s"
QString lengthText(double value, LengthUnit unit); // "1234.5 m", "12.34 m": at least four digits
QString speedText(double value, LengthUnit unit);  // "310.2 m/s"
QString angleText(double degrees);                 // "42.0°"

// The ends of the names of numbers in tables and records: "range" + nameEnding(…).
QString lengthNameEnding(LengthUnit unit); // "_m", "_ft", "_units"
QString speedNameEnding(LengthUnit unit);  // "_m_per_s", …
QString accelerationNameEnding(LengthUnit unit);

// A number that carries its unit at the end of its name, for people: "range_m" and 1234.5 give "range" and "1234.5 m".
struct NamedMeasure {
    QString name;
    QString text;
};
NamedMeasure namedMeasure(const QString& nameWithEnding, double value);
} // namespace sorvane
