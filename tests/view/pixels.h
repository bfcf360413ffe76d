// Counts pixels of pictures, for tests.
#pragma once

#include <QImage>

// How many pixels of a picture fit a description, a function of red, green and blue (0 to 255).
template <class Fits> int countPixels(const QImage& picture, const Fits& fits) {
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            count += fits(qRed(pixel), qGreen(pixel), qBlue(pixel)) ? 1 : 0;
        }
    return count;
}

inline int litPixels(const QImage& picture) {
    return countPixels(picture, [](int r, int g, int b) { return r + g + b > 0; });
}
