// The bar at a picture's edge that tells which radiance has which colour.
#include "colourbar.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include "overlaytext.h"

namespace sorvane {
namespace {
constexpr double kBarHeight = 0.5; // of the picture's
constexpr double kLinesPerTick = 2.5;
constexpr QRgb kBehind = 0xA0000000;
constexpr QRgb kText = 0xFFE0E0E0;
} // namespace

std::vector<double> barTicks(const ScaleEnds& ends, int most) {
    const double extent = ends.white - ends.black;
    if (!(extent > 0.0) || !std::isfinite(extent) || most < 1)
        return {};
    const double power = std::pow(10.0, std::floor(std::log10(extent / most)));
    double step = 10.0 * power;
    for (const double factor : {5.0, 2.0, 1.0})
        if (factor * power * most >= extent)
            step = factor * power;
    std::vector<double> ticks;
    // Counted, so that no rounding adds up and 0 is 0.
    const double slack = 1e-9 * extent;
    const double first = std::ceil((ends.black - slack) / step);
    for (int i = 0; i <= most && (first + i) * step <= ends.white + slack; ++i) {
        const double number = first + i;
        ticks.push_back(number == 0.0 ? 0.0 : number * step);
    }
    return ticks;
}

QStringList barTexts(const std::vector<double>& ticks) {
    int decimals = 1;
    for (std::size_t i = 1; i < ticks.size(); ++i) {
        const double greatest = std::max(std::abs(ticks[i]), std::abs(ticks[i - 1]));
        const double step = ticks[i] - ticks[i - 1];
        decimals = std::max(
            decimals, static_cast<int>(std::floor(std::log10(greatest)) - std::floor(std::log10(step * 1.0000001))));
    }
    QStringList texts;
    for (const double tick : ticks)
        texts << (tick == 0.0 ? QStringLiteral("0") : QString::number(tick, 'e', decimals));
    return texts;
}

void paintColourBar(QImage& picture, const ScaleEnds& ends, Palette palette) {
    const int letters = textPixelSize(picture.size());
    QFont font;
    font.setPixelSize(letters);
    const QFontMetricsF metrics(font);
    const QString unit = QStringLiteral("W/cm²/sr");
    const double line = metrics.height();
    const double margin = letters * 0.5;
    const double barWidth = letters;
    const double barHeight = std::max(kBarHeight * picture.height(), 2.0 * line);
    const std::vector<double> ticks = barTicks(ends, std::max(static_cast<int>(barHeight / (kLinesPerTick * line)), 1));
    const QStringList texts = barTexts(ticks);
    // No narrower than usual texts, so that it doesn't jump while an automatic scale changes.
    double textWidth = std::max(metrics.horizontalAdvance(QStringLiteral("0.00e-00")), metrics.horizontalAdvance(unit));
    for (const QString& text : texts)
        textWidth = std::max(textWidth, metrics.horizontalAdvance(text));
    const double width = textWidth + barWidth + 3.0 * margin;
    const QRectF behind(
        picture.width() - width - margin, (picture.height() - barHeight) / 2.0 - line - 2.0 * margin, width,
        barHeight + 2.0 * line + 3.0 * margin);
    const QRectF bar(behind.right() - margin - barWidth, behind.top() + line + 1.5 * margin, barWidth, barHeight);

    QPainter painter(&picture);
    painter.setFont(font);
    painter.fillRect(behind, QColor::fromRgba(kBehind));
    const auto colours = coloursOf(palette);
    const auto rows = static_cast<int>(barHeight);
    for (int row = 0; row < rows; ++row) {
        const auto colour = static_cast<std::size_t>(255 - row * 255 / std::max(rows - 1, 1));
        painter.fillRect(QRectF(bar.left(), bar.top() + row, bar.width(), 1.0), QColor(colours[colour]));
    }
    painter.setPen(QColor::fromRgba(kText));
    painter.drawText(
        QRectF(behind.left(), behind.top() + margin * 0.5, width - margin, line), Qt::AlignRight | Qt::AlignVCenter,
        unit);
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        const double y = bar.bottom() - (ticks[i] - ends.black) / (ends.white - ends.black) * bar.height();
        painter.drawLine(QPointF(bar.left() - margin * 0.5, y), QPointF(bar.left(), y));
        painter.drawText(
            QRectF(behind.left(), y - line / 2.0, textWidth + margin * 0.5, line), Qt::AlignRight | Qt::AlignVCenter,
            texts[static_cast<qsizetype>(i)]);
    }
}
} // namespace sorvane
