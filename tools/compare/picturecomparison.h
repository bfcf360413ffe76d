// Compares two pictures pixel by pixel.
#pragma once

#include <QImage>
#include <QSize>

namespace sorvane {
// Colours and opacities count as 0 to 255, whatever the pictures' formats.
struct PictureComparison {
    QSize sizeA;
    QSize sizeB;
    qint64 differing = 0; // pixels of which a channel differs by more than the tolerance
    int largest = 0;      // difference of any channel of any pixel

    // Pictures of different sizes have no pixels in common: nothing above is counted then.
    bool isSameSize() const { return sizeA == sizeB; }
    // Of all pixels, 0 to 1.
    double differingShare() const;
    // Whether the pictures count as equal when at most this share of the pixels may differ.
    bool agrees(double allowedShare = 0.0) const { return isSameSize() && differingShare() <= allowedShare; }
};

PictureComparison comparePictures(const QImage& a, const QImage& b, int tolerance = 0);

// A dimmed, grey over which pixels that differ by more than the tolerance are red, the brighter the more they differ.
// The pictures must be of one size.
QImage differencePicture(const QImage& a, const QImage& b, int tolerance = 0);
} // namespace sorvane
