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

// The parts of a polyline with y from `top` to `bottom`.
std::vector<QPolygonF> partsBetween(const QPolygonF& line, double top, double bottom) {
    std::vector<QPolygonF> parts;
    bool isOpen = false; // whether the last part ends where the next piece begins
    for (qsizetype i = 1; i < line.size(); ++i) {
        const QLineF piece(line[i - 1], line[i]);
        // Where along the piece, from 0 to 1, it is within.
        double from = 0.0;
        double to = 1.0;
        if (piece.dy() == 0.0) {
            if (piece.y1() < top || piece.y1() > bottom)
                to = -1.0;
        } else {
            const auto [enters, leaves] =
                std::minmax({(top - piece.y1()) / piece.dy(), (bottom - piece.y1()) / piece.dy()});
            from = std::max(from, enters);
            to = std::min(to, leaves);
        }
        if (from > to) {
            isOpen = false;
            continue;
        }
        if (!isOpen)
            parts.emplace_back().append(piece.pointAt(from));
        parts.back().append(piece.pointAt(to));
        isOpen = to == 1.0;
    }
    return parts;
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
    // What is written as SVG is cut off by nobody else.
    const bool isCut = painter->paintEngine()->type() == QPaintEngine::SVG;
    const double top = clipRect().top();
    const double bottom = top + clipRect().height();
    QPolygonF piece;
    const auto drawPiece = [&] {
        if (piece.size() == 1) { // a value between two gaps
            if (!isCut || (piece.front().y() >= top && piece.front().y() <= bottom))
                painter->drawEllipse(piece.front(), 1.5, 1.5);
        } else if (isCut) {
            for (const QPolygonF& part : partsBetween(piece, top, bottom))
                painter->drawPolyline(part);
        } else if (!piece.isEmpty()) {
            painter->drawPolyline(piece);
        }
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
