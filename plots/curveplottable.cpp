// Draws a curve of a plot.
#include "curveplottable.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "thinning.h"

namespace sorvane {
namespace {
template <class Value> QCPRange rangeOf(std::span<const PlotPoint> points, bool& isFound, const Value& valueOf) {
    double lower = std::numeric_limits<double>::infinity();
    double upper = -lower;
    for (const PlotPoint& point : points)
        if (std::isfinite(point.value)) {
            lower = std::min(lower, valueOf(point));
            upper = std::max(upper, valueOf(point));
        }
    isFound = lower <= upper;
    return isFound ? QCPRange(lower, upper) : QCPRange();
}
} // namespace

CurvePlottable::CurvePlottable(QCPAxisRect& strip, const PlotCurve& curve)
    : QCPAbstractPlottable(strip.axis(QCPAxis::atBottom), strip.axis(QCPAxis::atLeft)), curve_(curve) {
    setName(curve.name);
    setSelectable(QCP::stNone);
}

void CurvePlottable::fit(const TimeRange& range, int columns) {
    shown_.clear();
    for (std::size_t line = 0; line < curve_.lineCount(); ++line) {
        if (!shown_.empty())
            shown_.push_back({range.begin, std::numeric_limits<double>::quiet_NaN()});
        appendThinned(curve_.line(line), range, columns, shown_);
    }
}

QCPRange CurvePlottable::getKeyRange(bool& isFound, QCP::SignDomain /*domain*/) const {
    return rangeOf(shown_, isFound, [](const PlotPoint& point) { return point.time; });
}

QCPRange CurvePlottable::getValueRange(bool& isFound, QCP::SignDomain /*domain*/, const QCPRange& /*keys*/) const {
    return rangeOf(shown_, isFound, [](const PlotPoint& point) { return point.value; });
}

double CurvePlottable::selectTest(const QPointF& /*position*/, bool /*onlySelectable*/, QVariant* /*details*/) const {
    return -1.0; // nothing of a plot is selected
}

void CurvePlottable::draw(QCPPainter* painter) {
    const QCPAxis& times = *keyAxis();
    const QCPAxis& values = *valueAxis();
    painter->setPen(pen());
    painter->setBrush(Qt::NoBrush);
    applyDefaultAntialiasingHint(painter);
    QPolygonF piece;
    const auto drawPiece = [&] {
        if (piece.size() == 1)
            painter->drawEllipse(piece.front(), 1.5, 1.5); // a value between two gaps
        else if (!piece.isEmpty())
            painter->drawPolyline(piece);
        piece.clear();
    };
    for (const PlotPoint& point : shown_) {
        if (std::isfinite(point.value))
            piece.append({times.coordToPixel(point.time), values.coordToPixel(point.value)});
        else
            drawPiece();
    }
    drawPiece();
}

void CurvePlottable::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const {
    painter->setPen(pen());
    painter->drawLine(QLineF(rect.left(), rect.center().y(), rect.right(), rect.center().y()));
}
} // namespace sorvane
