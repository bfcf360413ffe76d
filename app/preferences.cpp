// What the viewer keeps from one session to the next.
#include "preferences.h"

#include <QWidget>

namespace sorvane {
namespace {
QString geometryKey(const QWidget& window) {
    return QStringLiteral("geometry/%1").arg(window.objectName());
}
} // namespace

Preferences::Preferences() {
    if (qEnvironmentVariable("SORVANE_NO_SETTINGS") != QLatin1String("1"))
        settings_.emplace(QStringLiteral("sorvane"), QStringLiteral("new_sorvane"));
}

std::optional<int> Preferences::number(const char* name, int most) const {
    if (!settings_)
        return std::nullopt;
    bool isNumber = false;
    const int value = settings_->value(QLatin1String(name)).toInt(&isNumber);
    return isNumber && value >= 0 && value <= most ? std::optional(value) : std::nullopt;
}

void Preferences::setNumber(const char* name, int value) {
    if (settings_)
        settings_->setValue(QLatin1String(name), value);
}

void Preferences::restoreGeometry(QWidget& window) const {
    if (settings_)
        window.restoreGeometry(settings_->value(geometryKey(window)).toByteArray());
}

void Preferences::keepGeometry(const QWidget& window) {
    if (settings_)
        settings_->setValue(geometryKey(window), window.saveGeometry());
}
} // namespace sorvane
