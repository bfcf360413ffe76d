// The lines of the read-out: what view and pictures say of an encounter at a time.
#pragma once

#include <optional>

#include <QString>
#include <QStringList>

#include "encounter.h"
#include "measuredengagement.h"

namespace sorvane {
// What a read-out describes.
struct ReadoutFacts {
    double time = 0.0; // seconds
    QString engagement{};
    const MeasuredEngagement* measured = nullptr; // null when there is none to speak of; it has samples
    std::optional<ClosestApproach> closest{};
    QString view{};
};

// Stands in the place of a number that there is none of.
QString noNumber();

// A label and its value, which stand in columns of letters of equal width.
QString readoutLine(const char* label, const QString& value);

QStringList readoutLines(const ReadoutFacts& facts);
} // namespace sorvane
