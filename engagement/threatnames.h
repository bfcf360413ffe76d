// Which model stands for which threat.
#pragma once

#include <QMap>
#include <QString>

// The path of the threat's model below the data root, without extension. Every identifier has one.
QString getThreatName(const QString& threatId);

// An empty map: deliberate, no table is read from a file.
QMap<QString, QString> loadThreatNames();
