// Pictures whose place, orientation and colours can be told after a lossy movie, for tests.
#pragma once

#include <QImage>
#include <QPoint>

// Four quadrants: red and green above blue and white.
QImage quadrants(int width, int height);

// Grey, with a dark bar over the full height that stands at the left in picture 0 and moves by 8 pixels a picture.
QImage barPicture(int index, int width, int height);

// The number of the barPicture that a decoded picture shows.
int barIndex(const QImage& picture);

// Each pixel another colour; the same for the same `seed`.
QImage noise(unsigned seed, int width, int height);

// The largest difference of the red, green and blue of two colours.
int colourDifference(QRgb a, QRgb b);

// The largest colourDifference to quadrants() in the middle of each quadrant.
int differenceToQuadrants(const QImage& picture);
