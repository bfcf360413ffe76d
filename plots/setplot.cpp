// What the plots of a set's columns have in common: axes, colours, and brushing with the mouse.
#include "setplot.h"

#include <algorithm>
#include <cmath>

#include "stripplot.h"

namespace sorvane {
namespace {
constexpr std::size_t kMostLabels = 24; // at an axis
constexpr double kRoom = 0.03;          // of the values' range, at both ends
} // namespace

SetPlot::SetPlot(QWidget* parent) : QCustomPlot(parent) {
    setFocusPolicy(Qt::NoFocus); // the keys stay with the table
    setSelectionRectMode(QCP::srmCustom);
    setInteraction(QCP::iRangeZoom);
    setNoAntialiasingOnDrag(true);
    axisRect()->setMinimumMargins(QMargins(4, 6, 10, 2));
    axisRect()->setupFullAxesBox(true);
    connect(selectionRect(), &QCPSelectionRect::accepted, this, [this](const QRect& pixels) {
        const QPointF from(xAxis->pixelToCoord(pixels.left()), yAxis->pixelToCoord(pixels.bottom()));
        const QPointF to(xAxis->pixelToCoord(pixels.right()), yAxis->pixelToCoord(pixels.top()));
        if (brushed_)
            brushed_(QRectF(from, to).normalized());
    });
    connect(selectionRect(), &QCPSelectionRect::canceled, this, [this] {
        if (brushed_)
            brushed_(std::nullopt);
    });
    colourAxes();
}

void SetPlot::setMarks(std::span<const std::uint8_t> marks) {
    marks_.assign(marks.begin(), marks.end());
    showMarks();
    replot(rpQueuedReplot);
}

void SetPlot::setTheme(const PlotTheme& theme) {
    theme_ = &theme;
    colourAxes();
    useColours();
    replot(rpQueuedReplot);
}

void SetPlot::mouseDoubleClickEvent(QMouseEvent* event) {
    QCustomPlot::mouseDoubleClickEvent(event);
    showAll();
    replot(rpQueuedReplot);
}

bool SetPlot::hasMarks() const {
    return std::ranges::find(marks_, std::uint8_t{1}) != marks_.end();
}

void SetPlot::labelAxis(QCPAxis& axis, const PlottedColumn& column) {
    axis.setLabel(column.title);
    if (column.labels.empty() || column.labels.size() > kMostLabels) {
        axis.setTicker(QSharedPointer<QCPAxisTicker>(new QCPAxisTicker));
    } else {
        const QSharedPointer<QCPAxisTickerText> texts(new QCPAxisTickerText);
        for (std::size_t i = 0; i < column.labels.size(); ++i)
            texts->addTick(static_cast<double>(i), QString::fromStdString(column.labels[i]));
        axis.setTicker(texts);
    }
    axis.ticker()->setTickCount(4);
    axis.setNumberFormat(QStringLiteral("g"));
    axis.setNumberPrecision(6);
}

QCPRange SetPlot::rangeOf(const PlottedColumn& column) {
    double lower = std::numeric_limits<double>::infinity();
    double upper = -lower;
    for (const double value : column.values)
        if (std::isfinite(value)) {
            lower = std::min(lower, value);
            upper = std::max(upper, value);
        }
    if (lower > upper)
        return {0.0, 1.0};
    const double room = upper > lower ? kRoom * (upper - lower) : std::max(0.05 * std::abs(lower), 0.5);
    return {lower - room, upper + room};
}

void SetPlot::colourAxes() {
    setBackground(theme_->background);
    selectionRect()->setPen(QPen(theme_->cursor));
    selectionRect()->setBrush(theme_->loop);
    for (QCPAxis* const axis : axisRect()->axes()) {
        axis->setBasePen(QPen(theme_->frame));
        axis->setTickPen(QPen(theme_->frame));
        axis->setSubTickPen(QPen(theme_->frame));
        axis->setTickLabelColor(theme_->text);
        axis->setLabelColor(theme_->text);
        axis->setTickLabelFont(StripPlot::textFont(0.85));
        axis->setLabelFont(StripPlot::textFont(0.9));
        axis->setLabelPadding(3);
        axis->grid()->setPen(QPen(theme_->grid));
        axis->grid()->setZeroLinePen(QPen(theme_->grid));
    }
}
} // namespace sorvane
