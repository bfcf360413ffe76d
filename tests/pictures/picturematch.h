// Whether a picture shows what its reference shows.
#pragma once

#include <string>

#include <QImage>

namespace sorvane {
// Another version of the renderer may put an edge or a line one pixel aside and round a shade to the next grey. So a
// pixel differs where no pixel of the other picture's 3 × 3 pixels around it is alike, looked at from both pictures,
// since a line that is missing is only missed from the reference. A change of shades that the neighbours hide shows in
// the mean. Both are taken over the pixels that are not black in one of the pictures, so that a change of a small thing
// counts as much in a picture that shows little else. By these bounds Mesa's two software renderers, which share no
// rasteriser, draw the same pictures.
constexpr int kAlikeGreyLevels = 20;            // the largest difference of a colour between alike pixels
constexpr double kLargestDifferingShare = 0.02; // of what is drawn
constexpr double kLargestMeanDifference = 4.0;  // grey levels, of what is drawn

struct PictureMatch {
    bool isSameSize = false;
    double differingShare = 0.0;
    double meanDifference = 0.0;

    bool isGood() const {
        return isSameSize && differingShare <= kLargestDifferingShare && meanDifference <= kLargestMeanDifference;
    }
    std::string text() const;
};

PictureMatch matchPictures(const QImage& actual, const QImage& reference);

// The reference, dimmed, with the differing pixels on it: red where the actual picture has what the reference lacks,
// green where it lacks what the reference has. For pictures of one size.
QImage differenceOf(const QImage& actual, const QImage& reference);

// Whether the pixel, in the middle of its 3 × 3 neighbours, looks as a point of the table says:
//   green, yellow, cyan, grid, reticle   one of the nine shows this line; with ! before it, none
//   red:LEAST-GREATEST                   one of the nine shows a flare's trail with this much red
//   lit, black                           one of the nine is brighter than black, all are black
//   grey:LEAST-GREATEST                  the nine are grey, from LEAST to GREATEST
//   point:LEAST-GREATEST                 the brightest of the nine is a grey of these
// An unknown look holds nowhere.
bool looksLike(const QImage& picture, int x, int y, const std::string& look);
} // namespace sorvane
