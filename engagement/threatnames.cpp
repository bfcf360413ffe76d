// Which model stands for which threat.
#include "threatnames.h"

QString getThreatName(const QString& threatId) {
    return threatId == QStringLiteral("Bullet") ? QStringLiteral("tgt0451/tgt0451") : QStringLiteral("tgt0450/tgt0450");
}

QMap<QString, QString> loadThreatNames() {
    return {};
}
