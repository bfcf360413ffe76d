// Pictures whose place, orientation and colours can be told after a lossy movie, for tests.
#include "testpictures.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <random>

namespace {
constexpr int kBarStep = 8;
constexpr std::array<QRgb, 4> kQuadrants = {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF};

template <class F> QImage paint(int width, int height, F colourAt) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x)
            row[x] = colourAt(x, y);
    }
    return image;
}

QRgb quadrantColour(bool isRight, bool isLower) {
    return kQuadrants[(isRight ? 1U : 0U) + (isLower ? 2U : 0U)];
}
} // namespace

QImage quadrants(int width, int height) {
    return paint(width, height, [=](int x, int y) { return quadrantColour(x >= width / 2, y >= height / 2); });
}

QImage barPicture(int index, int width, int height) {
    return paint(
        width, height, [=](int x, int) { return x / kBarStep == index ? qRgb(20, 20, 20) : qRgb(150, 150, 150); });
}

int barIndex(const QImage& picture) {
    int darkest = 0;
    for (int x = 0; x < picture.width(); ++x)
        if (qGray(picture.pixel(x, picture.height() / 2)) < qGray(picture.pixel(darkest, picture.height() / 2)))
            darkest = x;
    return darkest / kBarStep;
}

QImage noise(unsigned seed, int width, int height) {
    std::mt19937 random(seed);
    return paint(width, height, [&](int, int) { return static_cast<QRgb>(0xFF000000U | (random() & 0xFFFFFFU)); });
}

int colourDifference(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

int differenceToQuadrants(const QImage& picture) {
    int largest = 0;
    for (const bool isRight : {false, true})
        for (const bool isLower : {false, true}) {
            const QRgb shown =
                picture.pixel(picture.width() * (isRight ? 3 : 1) / 4, picture.height() * (isLower ? 3 : 1) / 4);
            largest = std::max(largest, colourDifference(shown, quadrantColour(isRight, isLower)));
        }
    return largest;
}
