// A set of engagements for the pictures.
#pragma once

#include <QDir>
#include <QStringList>

namespace sorvane {
// Writes trajectories of one encounter in many variants: from where the threat comes, when the flares come. Returns
// their paths.
QStringList writeNightSet(const QDir& folder, int engagements);
} // namespace sorvane
