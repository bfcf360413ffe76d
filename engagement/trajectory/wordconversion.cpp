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

std::optional<float> toFloat(QStringView word) {
    bool isNumber = false;
    const float value = word.toFloat(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<int> toInt(std::string_view word) {
    return toInt(QStringView(text(word)));
}

std::optional<double> toDouble(std::string_view word) {
    return toDouble(QStringView(text(word)));
}

std::optional<float> toFloat(std::string_view word) {
    return toFloat(QStringView(text(word)));
}
} // namespace sorvane
