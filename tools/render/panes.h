// Several views of one moment in one picture: which they are and where each has its pane.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <QImage>
#include <QPoint>
#include <QSize>

#include "problem.h"
#include "viewmode.h"

namespace sorvane {
// Beside the names of the view modes.
constexpr const char* kOverview = "overview";
constexpr const char* kSeeker = "seeker";

// A view as the options name it.
struct ViewChoice {
    ViewMode mode = ViewThreat;
    bool isOverview = false; // a free view of all of the followed engagement
    bool isSeeker = false;   // a gyro view on an automatic scale, unless all views are on one that is chosen

    bool isFree() const { return mode == ViewFree && !isOverview; }
    const char* name() const { return isOverview ? kOverview : isSeeker ? kSeeker : nameOf(mode).option; }
    bool operator==(const ViewChoice&) const = default;
};

// Takes views with commas between them, such as "threat,overview". What is wrong with the text; nothing when all is
// well.
std::optional<Problem> readPanes(std::string_view text, std::vector<ViewChoice>& panes);
std::string panesText(const std::vector<ViewChoice>& panes);

// Two panes are side by side, three and four two by two, all of one size with a dark gap between them. A single one is
// the picture.
class PaneLayout {
public:
    PaneLayout(QSize picture, std::size_t count);

    // Why the panes don't fit; nothing when all is well.
    std::optional<Problem> problem() const;
    QSize paneSize() const { return pane_; }
    // The top left pixel of pane number `pane`, from 0 in the order of reading.
    QPoint placeOf(std::size_t pane) const;
    std::size_t lowerLeft() const { return count_ > 2 ? 2 : 0; }
    // The picture before any pane; null when there is no memory for it.
    QImage emptyPicture() const;
    // Copies a pane's picture to its place. Both are in Format_RGB32.
    void put(const QImage& pane, std::size_t number, QImage& picture) const;

private:
    QSize picture_;
    std::size_t count_;
    QSize pane_;
};
} // namespace sorvane
