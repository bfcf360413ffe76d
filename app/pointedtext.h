// The lines of the read-out on what shows under the pointer.
#pragma once

#include <QStringList>

#include "scaledframe.h"

namespace sorvane {
// Radiance, what it is of, and the parts that it is made of, if it is a facet's.
QStringList pointedLines(const PointedRadiance& pointed);
} // namespace sorvane
