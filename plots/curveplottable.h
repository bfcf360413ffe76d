// Draws a curve of a plot.
#pragma once

#include <vector>

#include <qcustomplot.h>

#include "plotdocument.h"

namespace sorvane {
// Belongs to the plot of its axes. Draws what fit() has last picked from the curve, which must outlive it.
class CurvePlottable : public QCPAbstractPlottable {
public:
    CurvePlottable(QCPAxisRect& strip, const PlotCurve& curve);

    // Picks what shows between two times on so many columns of pixels.
    void fit(const TimeRange& range, int columns);

    // Of what was picked; not found where that has no value.
    QCPRange getKeyRange(bool& isFound, QCP::SignDomain domain = QCP::sdBoth) const override;
    QCPRange getValueRange(
        bool& isFound, QCP::SignDomain domain = QCP::sdBoth, const QCPRange& keys = QCPRange()) const override;
    double selectTest(const QPointF& position, bool onlySelectable, QVariant* details = nullptr) const override;

protected:
    void draw(QCPPainter* painter) override;
    void drawLegendIcon(QCPPainter* painter, const QRectF& rect) const override;

private:
    const PlotCurve& curve_;
    std::vector<PlotPoint> shown_; // gaps between lines
};
} // namespace sorvane
