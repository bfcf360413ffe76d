// The lines of the read-out: what view and pictures say of an encounter at a time.
#pragma once

#include <optional>
#include <span>

#include <QString>
#include <QStringList>

#include "encounter.h"
#include "measuretext.h"

namespace sorvane {
// What a read-out describes. Without samples there is no engagement to speak of.
struct ReadoutFacts {
    double time = 0.0; // seconds
    QString engagement{};
    std::span<const Sample> samples{};
    std::optional<ClosestApproach> closest{};
    QString view{};
    LengthUnit unit = LengthUnit::Unstated;
};

// Stands in the place of a number that there is none of.
QString noNumber();

// A label and its value, which stand in columns of letters of equal width.
QString readoutLine(const char* label, const QString& value);

QStringList readoutLines(const ReadoutFacts& facts);
} // namespace sorvane
