// The numbers of a trajectory file as words of its lines.
#include "wordconversion.h"

#include <cmath>

#include <QString>

namespace sorvane {
namespace {
QString text(std::string_view word) {
    return QString::fromLatin1(word.data(), static_cast<qsizetype>(word.size()));
}
} // namespace

std::optional<int> toInt(QStringView word) {
    bool isNumber = false;
    const int value = word.toInt(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

std::optional<double> toDouble(QStringView word) {
    bool isNumber = false;
    const double value = word.toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<double> toReal(QStringView word) {
    const std::optional<double> value = toDouble(word);
    return value && fitsSinglePrecision(*value) ? value : std::nullopt;
}

std::optional<int> toInt(std::string_view word) {
    return toInt(QStringView(text(word)));
}

std::optional<double> toDouble(std::string_view word) {
    return toDouble(QStringView(text(word)));
}

std::optional<double> toReal(std::string_view word) {
    return toReal(QStringView(text(word)));
}
} // namespace sorvane
