// Compares two pictures pixel by pixel.
#include "picturecomparison.h"

#include <algorithm>
#include <cstdlib>

namespace sorvane {
namespace {
int differenceOf(QRgb a, QRgb b) {
    return std::max(
        {std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b)),
         std::abs(qAlpha(a) - qAlpha(b))});
}

// The pictures' pixels as QRgb, row by row.
class PixelPairs {
public:
    PixelPairs(const QImage& a, const QImage& b)
        : a_(a.convertToFormat(QImage::Format_ARGB32)), b_(b.convertToFormat(QImage::Format_ARGB32)) {}

    // Calls use(x, y, pixel of A, pixel of B) for each.
    template <class Use> void forEach(Use use) const {
        for (int y = 0; y < a_.height(); ++y) {
            const auto* rowA = reinterpret_cast<const QRgb*>(a_.constScanLine(y));
            const auto* rowB = reinterpret_cast<const QRgb*>(b_.constScanLine(y));
            for (int x = 0; x < a_.width(); ++x)
                use(x, y, rowA[x], rowB[x]);
        }
    }

private:
    QImage a_;
    QImage b_;
};

// Even the smallest difference stands out.
QRgb differenceColour(int difference) {
    constexpr int kFaintest = 128;
    return qRgb(kFaintest + difference * (255 - kFaintest) / 255, 0, 0);
}

QRgb dimmed(QRgb pixel) {
    const int grey = qGray(pixel) / 3;
    return qRgb(grey, grey, grey);
}
} // namespace

double PictureComparison::differingShare() const {
    const qint64 pixels = qint64{sizeA.width()} * sizeA.height();
    return pixels == 0 ? 0.0 : static_cast<double>(differing) / static_cast<double>(pixels);
}

PictureComparison comparePictures(const QImage& a, const QImage& b, int tolerance) {
    PictureComparison comparison;
    comparison.sizeA = a.size();
    comparison.sizeB = b.size();
    if (!comparison.isSameSize())
        return comparison;
    PixelPairs(a, b).forEach([&](int, int, QRgb pixelA, QRgb pixelB) {
        const int difference = differenceOf(pixelA, pixelB);
        comparison.largest = std::max(comparison.largest, difference);
        comparison.differing += difference > tolerance ? 1 : 0;
    });
    return comparison;
}

QImage differencePicture(const QImage& a, const QImage& b, int tolerance) {
    QImage picture(a.size(), QImage::Format_RGB32);
    PixelPairs(a, b).forEach([&](int x, int y, QRgb pixelA, QRgb pixelB) {
        const int difference = differenceOf(pixelA, pixelB);
        reinterpret_cast<QRgb*>(picture.scanLine(y))[x] =
            difference > tolerance ? differenceColour(difference) : dimmed(pixelA);
    });
    return picture;
}
} // namespace sorvane
