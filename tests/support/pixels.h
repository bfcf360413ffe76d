// Counts and compares pixels of pictures, for tests.
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

// Around the pixels in which two pictures of one size differ.
inline QRect differingPart(const QImage& a, const QImage& b) {
    QRect part;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                part |= QRect(x, y, 1, 1);
    return part;
}
