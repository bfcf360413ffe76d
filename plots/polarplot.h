// Draws curves over the angle around a body, seen from above with the nose up.
#pragma once

#include <vector>

#include <qcustomplot.h>

#include "plottheme.h"

namespace sorvane {
struct PolarCurve {
    QString name;               // in the legend
    std::vector<double> values; // by equal steps from the nose to the right and around; what isn't finite is a gap
    int colour = 0;             // a number that the theme has a colour for
    bool isDashed = false;
};

struct PolarDocument {
    QString title;
    std::vector<PolarCurve> curves;
    bool isFromZero = true; // the middle is 0; else it lies below the least value
};

class PolarPlot : public QCustomPlot {
public:
    explicit PolarPlot(PolarDocument document, const PlotTheme& theme = lightPlotTheme());

    const PolarDocument& document() const { return document_; }
    // The values at the middle and at the rim.
    QCPRange valueRange() const { return radial_->range(); }
    const std::vector<QCPPolarGraph*>& graphs() const { return graphs_; }
    // Sizes all parts; to be called before the plot is drawn without a window.
    void arrange();

private:
    void makeAxes(const PlotTheme& theme);
    void makeCurve(const PolarCurve& curve, const PlotTheme& theme, QCPLegend& names);

    PolarDocument document_;
    QCPPolarAxisAngular* angular_ = nullptr; // of the plot, as all the following
    QCPPolarAxisRadial* radial_ = nullptr;
    std::vector<QCPPolarGraph*> graphs_; // one for each curve
};
} // namespace sorvane
