// Finds places for labels beside what they name, where they hide neither each other nor that.
#pragma once

#include <optional>
#include <span>
#include <vector>

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace sorvane {
// In pixels of the view, from its upper left corner.
struct LabelWish {
    QPointF body;        // what the label names: its middle,
    double radius = 0.0; // and how far it reaches
    QSizeF size;         // of the label
};

// A place within the view for each label, in the order of the wishes: close to the body's upper right, else at another
// of its corners, else below or above those that are taken. Nothing where all is taken.
// `occupied`: places that are taken from the start.
std::vector<std::optional<QRectF>>
placeLabels(std::span<const LabelWish> wishes, const QSizeF& view, std::span<const QRectF> occupied = {});
} // namespace sorvane
