// Finds places for labels beside what they name, where they hide neither each other nor that.
#include "labelplacement.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sorvane {
namespace {
constexpr double kGap = 4.0; // pixels between a body and its label
// What fills the view has its label within it.
constexpr double kLargestReach = 0.2; // of the view's height

// The places that are taken. Few fit beside each other, so that each row of the view holds few.
class TakenPlaces {
public:
    explicit TakenPlaces(double height, double rowHeight)
        : rowHeight_(rowHeight), rows_(static_cast<std::size_t>(std::max(height / rowHeight, 0.0)) + 1) {}

    bool isFree(const QRectF& place) const {
        for (std::size_t row = rowOf(place.top()); row <= rowOf(place.bottom()); ++row)
            if (std::ranges::any_of(rows_[row], [&](const QRectF& taken) { return taken.intersects(place); }))
                return false;
        return true;
    }
    void take(const QRectF& place) {
        for (std::size_t row = rowOf(place.top()); row <= rowOf(place.bottom()); ++row)
            rows_[row].push_back(place);
    }

private:
    std::size_t rowOf(double y) const {
        return std::min(static_cast<std::size_t>(std::max(y, 0.0) / rowHeight_), rows_.size() - 1);
    }

    double rowHeight_;
    std::vector<std::vector<QRectF>> rows_;
};

// The places of a label in the order in which they are tried.
std::vector<QRectF> candidates(const LabelWish& wish, const QSizeF& view) {
    const double reach =
        std::min(std::max(wish.radius, 0.0), kLargestReach * view.height()) / std::numbers::sqrt2 + kGap;
    const double right = wish.body.x() + reach;
    const double left = wish.body.x() - reach - wish.size.width();
    const double above = wish.body.y() - reach - wish.size.height();
    const double below = wish.body.y() + reach;
    std::vector<QRectF> places;
    for (const QPointF& corner : {QPointF(right, above), {right, below}, {left, above}, {left, below}})
        places.emplace_back(corner, wish.size);
    const double x = std::clamp(right, 0.0, std::max(view.width() - wish.size.width(), 0.0));
    const double step = wish.size.height() + 1.0;
    for (double away = 0.0; away < view.height(); away += step) {
        places.emplace_back(QPointF(x, below + away), wish.size);
        places.emplace_back(QPointF(x, above - away), wish.size);
    }
    return places;
}
} // namespace

std::vector<std::optional<QRectF>>
placeLabels(std::span<const LabelWish> wishes, const QSizeF& view, std::span<const QRectF> occupied) {
    double rowHeight = view.height();
    for (const LabelWish& wish : wishes)
        rowHeight = std::min(rowHeight, wish.size.height());
    TakenPlaces taken(view.height(), std::max(rowHeight, 1.0));
    for (const QRectF& place : occupied)
        taken.take(place);
    const QRectF all(QPointF(0.0, 0.0), view);
    std::vector<std::optional<QRectF>> places;
    for (const LabelWish& wish : wishes) {
        const std::vector<QRectF> tried = candidates(wish, view);
        const auto found = std::ranges::find_if(
            tried, [&](const QRectF& place) { return all.contains(place) && taken.isFree(place); });
        places.push_back(found == tried.end() ? std::nullopt : std::optional(*found));
        if (places.back())
            taken.take(*places.back());
    }
    return places;
}
} // namespace sorvane
