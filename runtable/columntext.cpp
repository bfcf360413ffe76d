// How a table of runs shows its columns and their values.
#include "columntext.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <QStringList>

#include "measure.h"
#include "measuretext.h"
#include "trajectoryheaderfields.h"

namespace sorvane {
namespace {
constexpr int kDigits = 7;     // of numbers without a unit
constexpr int kAllDigits = 12; // that a measure may have

// Of a unit's numbers; nothing where it has none of its own.
std::optional<int> decimalsOf(const QString& unit) {
    if (unit == QLatin1String("s"))
        return 3;
    if (unit == unitSymbol(LengthUnit::Metres) || unit == unitSymbol(LengthUnit::Feet) ||
        unit == unitSymbol(LengthUnit::Unstated))
        return 2;
    if (unit == QStringLiteral("°") || unit.endsWith(QLatin1String("/s")))
        return 1;
    return std::nullopt;
}

QString numberText(double value, const QString& unit) {
    constexpr double kLong = 1.0e9; // digits that no column is wide enough for
    const std::optional<int> decimals = decimalsOf(unit);
    if (!decimals || std::abs(value) >= kLong)
        return QString::number(value, 'g', kDigits);
    const QString text = QString::number(value, 'f', *decimals);
    return text.startsWith(u'-') && text.toDouble() == 0.0 ? text.mid(1) : text;
}

const Measure* measureOf(const QString& nameWithoutUnit) {
    return findMeasure(QString(nameWithoutUnit).replace(u'_', u'-').toStdString());
}

QString quotedText(const std::string& text) {
    return u'\'' + QString::fromStdString(text).replace(u'\'', QLatin1String("''")) + u'\'';
}
} // namespace

QString ColumnTitle::inLines() const {
    constexpr qsizetype kLongest = 18; // letters of a line
    QString lines = name;
    if (const qsizetype middle = lines.lastIndexOf(u' ', kLongest); lines.size() > kLongest && middle > 0)
        lines[middle] = u'\n';
    return unit.isEmpty() ? lines : lines + u'\n' + unit;
}

ColumnTitle columnTitle(const std::string& column) {
    const QString whole = QString::fromStdString(column);
    const NamedMeasure named = namedMeasure(whole, 1.0);
    QString unit;
    if (named.name != whole) {
        const auto isOfNumber = [](QChar letter) {
            return letter.isDigit() || letter == u'.' || letter == u' ';
        };
        unit = named.text.mid(std::ranges::find_if_not(named.text, isOfNumber) - named.text.begin());
    }
    return {QString(named.name).replace(u'_', u' '), unit};
}

ColumnKind columnKind(const std::string& column) {
    constexpr const char* kOfSurvey[] = {"faults",  "fault", "samples",          "flares",
                                         "start_s", "end_s", "field_of_view_deg"};
    const auto isColumn = [&](const char* name) {
        return column == name;
    };
    if (column == "path")
        return ColumnKind::Path;
    if (std::ranges::any_of(kOfSurvey, isColumn))
        return ColumnKind::Survey;
    if (std::ranges::any_of(kTrajectoryHeaderFields, isColumn, &TrajectoryHeaderField::name))
        return ColumnKind::Header;
    return measureOf(namedMeasure(QString::fromStdString(column), 0.0).name) == nullptr ? ColumnKind::FieldOfPath
                                                                                        : ColumnKind::Measure;
}

QString columnHelp(const std::string& column) {
    const QString whole = QString::fromStdString(column);
    const Measure* const measure = measureOf(namedMeasure(whole, 0.0).name);
    return measure == nullptr ? whole : QStringLiteral("%1\n%2").arg(whole, QString::fromUtf8(measure->definition));
}

QString cellText(const RunValue& value, const QString& unit) {
    const auto* const number = std::get_if<double>(&value);
    return number == nullptr ? wholeText(value) : numberText(*number, unit);
}

QString wholeText(const RunValue& value) {
    if (const auto* const number = std::get_if<double>(&value))
        return QString::number(*number, 'g', kAllDigits);
    if (const auto* const whole = std::get_if<std::int64_t>(&value))
        return QString::number(*whole);
    const auto* const text = std::get_if<std::string>(&value);
    return text == nullptr ? QString() : QString::fromStdString(*text);
}

QString rangeCondition(const QString& column, double from, double to, const std::vector<std::string>& labels) {
    if (labels.empty())
        return QStringLiteral("%1 BETWEEN %2 AND %3")
            .arg(column, QString::number(from, 'g', kDigits), QString::number(to, 'g', kDigits));
    QStringList texts;
    for (std::size_t i = 0; i < labels.size(); ++i)
        if (static_cast<double>(i) >= from && static_cast<double>(i) <= to)
            texts << quotedText(labels[i]);
    return QStringLiteral("%1 IN (%2)").arg(column, texts.join(QLatin1String(", ")));
}
} // namespace sorvane
