// The bar at a picture's edge that tells which radiance has which colour.
#pragma once

#include <vector>

#include <QStringList>

#include "picturescale.h"

class QImage;

namespace sorvane {
// Round radiances between the ends, at most `most` + 1 of them, one, two or five times a power of ten apart.
std::vector<double> barTicks(const ScaleEnds& ends, int most);

// What they are called: with as many digits as tell neighbours apart.
QStringList barTexts(const std::vector<double>& ticks);

// Into the picture, of whose size it goes, at its right edge. Needs a QGuiApplication.
void paintColourBar(QImage& picture, const ScaleEnds& ends, Palette palette);
} // namespace sorvane
