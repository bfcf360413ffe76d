// Texts over a picture of the scene: read-out, title and the labels of bodies.
#include "overlaytext.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QPainter>

#include "labelplacement.h"

namespace sorvane {
namespace {
constexpr int kMargin = 8;  // pixels from the picture's edges
constexpr int kPadding = 4; // around a text
constexpr int kHalfPadding = kPadding / 2;
constexpr double kSwatch = 1.6; // of the letters' size
constexpr QColor kBackground(0, 0, 0, 190);
constexpr QColor kLetters(0xE0, 0xE0, 0xE0);

QFont fontOf(QFont::StyleHint style, int letterPixels) {
    QFont font(style == QFont::Monospace ? QStringLiteral("monospace") : QStringLiteral("sans-serif"));
    font.setStyleHint(style);
    font.setPixelSize(letterPixels);
    return font;
}
} // namespace

int textPixelSize(const QSizeF& picture) {
    constexpr double kLinesPerPicture = 36.0;
    constexpr int kLeast = 10;
    return std::max(static_cast<int>(std::lround(picture.height() / kLinesPerPicture)), kLeast);
}

void paintReadout(QPainter& painter, const QSizeF& picture, const QString& text) {
    painter.setFont(fontOf(QFont::Monospace, textPixelSize(picture)));
    const QSizeF size = QFontMetricsF(painter.font()).size(0, text) + QSizeF(2 * kPadding, 2 * kPadding);
    const QRectF box(QPointF(kMargin, picture.height() - kMargin - size.height()), size);
    painter.fillRect(box, kBackground);
    painter.setPen(kLetters);
    painter.drawText(box.adjusted(kPadding, kPadding, 0, 0), Qt::AlignLeft | Qt::AlignTop, text);
}

void paintTitle(QPainter& painter, const QSizeF& picture, const QString& title) {
    QFont font = fontOf(QFont::SansSerif, textPixelSize(picture) * 5 / 4);
    font.setBold(true);
    painter.setFont(font);
    const QFontMetricsF metrics(font);
    const QRectF line(0.0, 0.0, picture.width(), std::ceil(metrics.height()) + 2 * kPadding);
    painter.fillRect(line, kBackground);
    painter.setPen(kLetters);
    painter.drawText(
        line, Qt::AlignCenter, metrics.elidedText(title, Qt::ElideRight, std::max(picture.width() - 2 * kMargin, 0.0)));
}

QSizeF colourLegendSize(const ColourLegend& legend, int letterPixels) {
    const QFontMetricsF metrics(fontOf(QFont::SansSerif, letterPixels));
    double width = metrics.horizontalAdvance(legend.title);
    for (const ColourLegend::Entry& entry : legend.entries)
        width = std::max(width, metrics.horizontalAdvance(entry.text) + kSwatch * letterPixels + kPadding);
    const auto lines = static_cast<double>(legend.entries.size() + 1);
    return {std::ceil(width) + 2 * kPadding, std::ceil(lines * metrics.height()) + 2 * kPadding};
}

void paintColourLegend(QPainter& painter, const QRectF& place, const ColourLegend& legend, int letterPixels) {
    const QFont font = fontOf(QFont::SansSerif, letterPixels);
    const double height = QFontMetricsF(font).height();
    painter.fillRect(place, kBackground);
    painter.setFont(font);
    painter.setPen(kLetters);
    QRectF line = place.adjusted(kPadding, kPadding, -kPadding, 0);
    line.setHeight(height);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter, legend.title);
    for (const ColourLegend::Entry& entry : legend.entries) {
        line.translate(0.0, height);
        const QRectF swatch(line.left(), line.top() + 1.0, kSwatch * letterPixels, height - 2.0);
        painter.fillRect(swatch, QColor(entry.colour));
        painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter, entry.text);
    }
}

LabelPainter::LabelPainter(int letterPixels, double pixelRatio)
    : font_(fontOf(QFont::SansSerif, letterPixels)), pixelRatio_(pixelRatio) {}

void LabelPainter::paint(
    QPainter& painter, const QSizeF& view, std::span<const BodyLabel> labels, std::span<const QRectF> occupied) {
    std::vector<LabelWish> wishes;
    wishes.reserve(labels.size());
    for (const BodyLabel& label : labels)
        wishes.push_back({label.body, label.radius, imageOf(label).deviceIndependentSize()});
    const std::vector<std::optional<QRectF>> places = placeLabels(wishes, view, occupied);
    for (std::size_t i = 0; i < labels.size(); ++i)
        if (places[i])
            painter.drawImage(places[i]->topLeft().toPoint(), imageOf(labels[i]));
}

const QImage& LabelPainter::imageOf(const BodyLabel& label) {
    constexpr qsizetype kMostKept = 4096; // of names that come and go
    if (images_.size() > kMostKept)
        images_.clear();
    QImage& image = images_[{label.text, label.colour}];
    if (!image.isNull())
        return image;
    const QFontMetricsF metrics(font_);
    const QSizeF size(
        std::ceil(metrics.horizontalAdvance(label.text)) + 2 * kPadding, std::ceil(metrics.height()) + kHalfPadding);
    image = QImage((size * pixelRatio_).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pixelRatio_);
    image.fill(kBackground);
    QPainter painter(&image);
    painter.setFont(font_);
    painter.setPen(QColor(label.colour));
    painter.drawText(QRectF(QPointF(0.0, 0.0), size), Qt::AlignCenter, label.text);
    return image;
}
} // namespace sorvane
