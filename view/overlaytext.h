// Texts over a picture of the scene: read-out, title and the labels of bodies.
#pragma once

#include <span>
#include <vector>

#include <QColor>
#include <QFont>
#include <QHash>
#include <QImage>
#include <QString>

#include "bodylabels.h"

class QPainter;

namespace sorvane {
// The height of letters that can be read in a picture of this size, however large it is shown.
int textPixelSize(const QSizeF& picture);

// Lines in letters of equal width in the lower left corner, as the window has them.
void paintReadout(QPainter& painter, const QSizeF& picture, const QString& text);

// One line over the picture's whole width at its top, cut short where it doesn't fit.
void paintTitle(QPainter& painter, const QSizeF& picture, const QString& title);

// What colours stand for: a title, and a line for each.
struct ColourLegend {
    struct Entry {
        QRgb colour = 0;
        QString text;
        double from = 0.0; // where its values begin, if they are a range
    };
    QString title;
    std::vector<Entry> entries;
};
QSizeF colourLegendSize(const ColourLegend& legend, int letterPixels);
// Into a place of that size.
void paintColourLegend(QPainter& painter, const QRectF& place, const ColourLegend& legend, int letterPixels);

// Paints labels, and keeps those that it has painted before. Needs a QGuiApplication, as all texts do.
class LabelPainter {
public:
    // `pixelRatio`: how many pixels of what is painted on a pixel of the view has to a side.
    explicit LabelPainter(int letterPixels, double pixelRatio = 1.0);

    // Labels keep clear of the places that are occupied.
    void paint(
        QPainter& painter, const QSizeF& view, std::span<const BodyLabel> labels,
        std::span<const QRectF> occupied = {});

private:
    const QImage& imageOf(const BodyLabel& label);

    QFont font_;
    double pixelRatio_;
    QHash<std::pair<QString, QRgb>, QImage> images_;
};
} // namespace sorvane
