// Draws curves over the angle around a body, seen from above with the nose up.
#include "polarplot.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "stripplot.h"

namespace sorvane {
namespace {
constexpr double kLineWidth = 1.5;
constexpr double kRoomAtRim = 0.04; // of the values' range
constexpr double kRoomInMiddle = 0.2;
constexpr double kAngleOfZero = -90.0; // upwards; angles then run clockwise
constexpr double kTickDegrees = 30.0;

// From the middle to the rim; 0 is among the values.
QCPRange rangeOf(const PolarDocument& document) {
    QCPRange values(0.0, 0.0);
    for (const PolarCurve& curve : document.curves)
        for (const double value : curve.values)
            if (std::isfinite(value))
                values.expand(value);
    if (document.isFromZero)
        values.lower = 0.0;
    if (!(values.size() > 0.0))
        return {document.isFromZero ? 0.0 : -1.0, 1.0};
    const double room = kRoomAtRim * values.size();
    return {document.isFromZero ? 0.0 : values.lower - kRoomInMiddle * values.size(), values.upper + room};
}
} // namespace

PolarPlot::PolarPlot(PolarDocument document, const PlotTheme& theme) : document_(std::move(document)) {
    plotLayout()->clear();
    setAutoAddPlottableToLegend(false);
    setBackground(theme.background);
    int row = 0;
    if (!document_.title.isEmpty()) {
        auto* const title = new QCPTextElement(this, document_.title, StripPlot::textFont(1.25));
        title->setTextColor(theme.text);
        plotLayout()->addElement(row++, 0, title);
    }
    makeAxes(theme);
    plotLayout()->addElement(row++, 0, angular_);

    auto* const names = new QCPLegend;
    plotLayout()->addElement(row, 0, names);
    plotLayout()->setRowStretchFactor(row, 0.001);
    names->setLayer(QStringLiteral("legend"));
    names->setFont(StripPlot::textFont(1.0));
    names->setTextColor(theme.text);
    names->setBrush(Qt::NoBrush);
    names->setBorderPen(Qt::NoPen);
    names->setFillOrder(QCPLayoutGrid::foColumnsFirst);
    for (const PolarCurve& curve : document_.curves)
        makeCurve(curve, theme, *names);
    arrange();
}

void PolarPlot::makeAxes(const PlotTheme& theme) {
    angular_ = new QCPPolarAxisAngular(this);
    radial_ = angular_->radialAxis();
    angular_->setRange(0.0, 360.0);
    angular_->setAngle(kAngleOfZero);
    const QSharedPointer<QCPAxisTickerFixed> ticker(new QCPAxisTickerFixed);
    ticker->setTickStep(kTickDegrees);
    ticker->setScaleStrategy(QCPAxisTickerFixed::ssNone);
    angular_->setTicker(ticker);
    angular_->setSubTicks(false);
    angular_->setTickLabelMode(QCPPolarAxisAngular::lmUpright);
    angular_->setTickLabelFont(StripPlot::textFont(1.0));
    angular_->setTickLabelColor(theme.text);
    angular_->setBasePen(QPen(theme.frame));
    angular_->setTickPen(QPen(theme.frame));
    angular_->setLabelFont(StripPlot::textFont(1.0));
    angular_->grid()->setAngularPen(QPen(theme.grid));
    angular_->grid()->setRadialPen(QPen(theme.grid));
    angular_->grid()->setRadialZeroLinePen(QPen(theme.frame));

    radial_->setRange(rangeOf(document_));
    radial_->setNumberFormat(QStringLiteral("g"));
    radial_->setNumberPrecision(4);
    radial_->setTickLabelMode(QCPPolarAxisRadial::lmUpright);
    radial_->setTickLabelRotation(0.0);
    radial_->setAngle(45.0);
    radial_->setTickLabelFont(StripPlot::textFont(0.85));
    radial_->setTickLabelColor(theme.text);
    radial_->setBasePen(QPen(theme.frame));
    radial_->setTickPen(QPen(theme.frame));
    radial_->setSubTickPen(QPen(theme.frame));
}

void PolarPlot::makeCurve(const PolarCurve& curve, const PlotTheme& theme, QCPLegend& names) {
    auto* const graph = new QCPPolarGraph(angular_, radial_);
    graph->setName(curve.name);
    graph->setPeriodic(false);
    graph->setPen(QPen(theme.curve(curve.colour), kLineWidth, curve.isDashed ? Qt::DashLine : Qt::SolidLine));
    QVector<double> angles;
    QVector<double> values;
    const std::size_t count = curve.values.size();
    // Around to the first one again.
    for (std::size_t i = 0; count > 0 && i <= count; ++i) {
        const double value = curve.values[i % count];
        angles << 360.0 * static_cast<double>(i) / static_cast<double>(count);
        values << (std::isfinite(value) ? value : std::numeric_limits<double>::quiet_NaN());
    }
    graph->setData(angles, values, true);
    names.addItem(new QCPPolarLegendItem(&names, graph));
    graphs_.push_back(graph);
}

void PolarPlot::arrange() {
    for (int pass = 0; pass < 2; ++pass) {
        plotLayout()->update(QCPLayoutElement::upPreparation);
        plotLayout()->update(QCPLayoutElement::upMargins);
        plotLayout()->update(QCPLayoutElement::upLayout);
    }
}
} // namespace sorvane
