// Whether a picture shows what its reference shows.
#include "picturematch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>

namespace sorvane {
namespace {
int differenceBetween(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
}

// The colours of the 3 × 3 pixels around one, of those that are in the picture.
std::vector<QRgb> neighbourhood(const QImage& picture, int x, int y) {
    std::vector<QRgb> pixels;
    for (int row = std::max(y - 1, 0); row <= std::min(y + 1, picture.height() - 1); ++row)
        for (int column = std::max(x - 1, 0); column <= std::min(x + 1, picture.width() - 1); ++column)
            pixels.push_back(picture.pixel(column, row));
    return pixels;
}

bool isFoundIn(const QImage& other, int x, int y, QRgb pixel) {
    if (differenceBetween(other.pixel(x, y), pixel) <= kAlikeGreyLevels)
        return true;
    const std::vector<QRgb> around = neighbourhood(other, x, y);
    return std::any_of(around.begin(), around.end(), [pixel](QRgb candidate) {
        return differenceBetween(candidate, pixel) <= kAlikeGreyLevels;
    });
}

template <class Use> void forEachPixel(const QImage& picture, Use use) {
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            use(x, y);
}

bool isNear(QRgb pixel, QRgb colour) {
    return differenceBetween(pixel, colour) <= 6;
}

const std::map<std::string, QRgb, std::less<>>& lineColours() {
    static const std::map<std::string, QRgb, std::less<>> colours = {
        {"green", qRgb(0, 255, 0)},    {"yellow", qRgb(255, 255, 0)},    {"cyan", qRgb(0, 255, 255)},
        {"grid", qRgb(102, 102, 128)}, {"reticle", qRgb(178, 178, 178)},
    };
    return colours;
}
} // namespace

std::string PictureMatch::text() const {
    if (!isSameSize)
        return "another size";
    std::array<char, 120> text{};
    std::snprintf(
        text.data(), text.size(),
        "%.2f %% of what is drawn differs (%.2f may), %.2f grey levels in the mean (%.2f may)", 100.0 * differingShare,
        100.0 * kLargestDifferingShare, meanDifference, kLargestMeanDifference);
    return text.data();
}

PictureMatch matchPictures(const QImage& actual, const QImage& reference) {
    PictureMatch match;
    match.isSameSize = actual.size() == reference.size() && !actual.isNull();
    if (!match.isSameSize)
        return match;
    int drawn = 0;
    int differing = 0;
    std::array<int, 3> excess{}; // of the actual picture's colours over the reference's
    forEachPixel(actual, [&](int x, int y) {
        const QRgb here = actual.pixel(x, y);
        const QRgb there = reference.pixel(x, y);
        drawn += (here | there) != qRgb(0, 0, 0);
        differing += !isFoundIn(reference, x, y, here) || !isFoundIn(actual, x, y, there);
        excess[0] += qRed(here) - qRed(there);
        excess[1] += qGreen(here) - qGreen(there);
        excess[2] += qBlue(here) - qBlue(there);
    });
    drawn = std::max(drawn, 1);
    match.differingShare = static_cast<double>(differing) / drawn;
    for (const int sum : excess)
        match.meanDifference = std::max(match.meanDifference, std::abs(static_cast<double>(sum)) / drawn);
    return match;
}

QImage differenceOf(const QImage& actual, const QImage& reference) {
    QImage picture(reference.size(), QImage::Format_RGB32);
    forEachPixel(picture, [&](int x, int y) {
        const int grey = qGray(reference.pixel(x, y)) / 3;
        picture.setPixel(
            x, y,
            qRgb(
                isFoundIn(reference, x, y, actual.pixel(x, y)) ? grey : 255,
                isFoundIn(actual, x, y, reference.pixel(x, y)) ? grey : 255, grey));
    });
    return picture;
}

bool looksLike(const QImage& picture, int x, int y, const std::string& look) {
    if (look.starts_with('!'))
        return !looksLike(picture, x, y, look.substr(1));
    const std::vector<QRgb> pixels = neighbourhood(picture, x, y);
    const auto some = [&](auto fits) {
        return std::any_of(pixels.begin(), pixels.end(), fits);
    };
    const auto every = [&](auto fits) {
        return !pixels.empty() && std::all_of(pixels.begin(), pixels.end(), fits);
    };
    if (const auto colour = lineColours().find(look); colour != lineColours().end())
        return some([&](QRgb pixel) { return isNear(pixel, colour->second); });
    if (look == "lit")
        return some([](QRgb pixel) { return qGray(pixel) >= 8; });
    if (look == "black")
        return every([](QRgb pixel) { return isNear(pixel, qRgb(0, 0, 0)); });
    int least = 0;
    int greatest = 0;
    if (std::sscanf(look.c_str(), "grey:%d-%d", &least, &greatest) == 2)
        return every([&](QRgb pixel) {
            return isNear(pixel, qRgb(qGreen(pixel), qGreen(pixel), qGreen(pixel))) && qGreen(pixel) >= least &&
                   qGreen(pixel) <= greatest;
        });
    if (std::sscanf(look.c_str(), "red:%d-%d", &least, &greatest) == 2)
        return some([&](QRgb pixel) {
            return qRed(pixel) >= least && qRed(pixel) <= greatest && qRed(pixel) > 2 * qGreen(pixel);
        });
    if (std::sscanf(look.c_str(), "point:%d-%d", &least, &greatest) == 2) {
        int brightest = 0;
        for (const QRgb pixel : pixels)
            brightest = std::max(brightest, qGreen(pixel));
        return brightest >= least && brightest <= greatest;
    }
    return false;
}
} // namespace sorvane
