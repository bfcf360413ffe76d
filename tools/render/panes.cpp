// Several views of one moment in one picture: which they are and where each has its pane.
#include "panes.h"

#include <algorithm>

#include "picturesize.h"

namespace sorvane {
namespace {
constexpr int kGap = 2;        // pixels between panes, and one more where the rest is odd
constexpr int kLeastSide = 16; // pixels of a pane
constexpr std::size_t kFewest = 2;
constexpr std::size_t kMost = 4;
constexpr QRgb kGapColour = qRgb(0x30, 0x30, 0x30);

std::optional<ViewChoice> viewNamed(std::string_view name) {
    if (name == kOverview)
        return ViewChoice{.mode = ViewFree, .isOverview = true};
    if (name == kSeeker)
        return ViewChoice{.mode = ViewGyro, .isSeeker = true};
    for (const ViewModeName& view : kViewModes)
        if (name == view.option)
            return ViewChoice{.mode = view.mode};
    return std::nullopt;
}

std::string viewNames() {
    std::string names;
    for (const ViewModeName& view : kViewModes)
        names.append(view.option).append(", ");
    return names + kOverview + ", or " + kSeeker;
}
} // namespace

std::optional<Problem> readPanes(std::string_view text, std::vector<ViewChoice>& panes) {
    std::vector<ViewChoice> read;
    for (bool isThrough = false; !isThrough;) {
        const std::size_t comma = std::min(text.find(','), text.size());
        const std::string_view name = text.substr(0, comma);
        const std::optional<ViewChoice> view = viewNamed(name);
        if (!view)
            return "\"" + std::string(name) + "\" is no view; each pane is one of " + viewNames();
        read.push_back(*view);
        isThrough = comma == text.size();
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    if (read.size() < kFewest || read.size() > kMost)
        return "two to four views with commas between them are wanted, such as threat,gyro, and not " +
               std::to_string(read.size());
    panes = std::move(read);
    return {};
}

std::string panesText(const std::vector<ViewChoice>& panes) {
    std::string text;
    for (const ViewChoice& pane : panes)
        text.append(text.empty() ? "" : ",").append(pane.name());
    return text;
}

PaneLayout::PaneLayout(QSize picture, std::size_t count)
    : picture_(picture), count_(count), pane_(
                                            count < 2 ? picture.width() : (picture.width() - kGap) / 2,
                                            count < 3 ? picture.height() : (picture.height() - kGap) / 2) {}

std::optional<Problem> PaneLayout::problem() const {
    if (count_ < 2 || (pane_.width() >= kLeastSide && pane_.height() >= kLeastSide))
        return {};
    constexpr int kTwo = 2 * kLeastSide + kGap;
    return "--size " + sizeText(picture_) + " is too small for " + std::to_string(count_) +
           " panes: " + sizeText({kTwo, count_ < 3 ? kLeastSide : kTwo}) + " is the least";
}

QPoint PaneLayout::placeOf(std::size_t pane) const {
    return {pane % 2 == 0 ? 0 : picture_.width() - pane_.width(), pane < 2 ? 0 : picture_.height() - pane_.height()};
}

QImage PaneLayout::emptyPicture() const {
    QImage picture(picture_, QImage::Format_RGB32);
    picture.fill(kGapColour);
    return picture;
}

void PaneLayout::put(const QImage& pane, std::size_t number, QImage& picture) const {
    const QPoint place = placeOf(number);
    for (int y = 0; y < pane.height(); ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(pane.constScanLine(y));
        std::copy_n(row, pane.width(), reinterpret_cast<QRgb*>(picture.scanLine(place.y() + y)) + place.x());
    }
}
} // namespace sorvane
