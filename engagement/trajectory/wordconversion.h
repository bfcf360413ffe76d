// The numbers of a trajectory file as words of its lines.
#pragma once

#include <cmath>
#include <limits>
#include <optional>

#include <QStringView>

// A word that is not wholly a number of its type, or is not finite, is malformed: nothing. Independent of the locale.
inline std::optional<int> toInt(QStringView word) {
    bool isNumber = false;
    const int value = word.toInt(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

inline std::optional<double> toDouble(QStringView word) {
    bool isNumber = false;
    const double value = word.toDouble(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

inline std::optional<float> toFloat(QStringView word) {
    bool isNumber = false;
    const float value = word.toFloat(&isNumber);
    return isNumber && std::isfinite(value) ? std::optional(value) : std::nullopt;
}
