// Draws a document of curves: strips below each other over one time axis.
#include "stripplot.h"

#include <algorithm>
#include <cmath>

#include "curveplottable.h"

namespace sorvane {
namespace {
constexpr double kLeastSeconds = 0.002; // in view
constexpr double kRoomForValues = 0.06; // of their range, above and below
constexpr double kLineWidth = 1.0;      // pixels; wider lines take Qt three times as long
constexpr int kLetterPixels = 12;
constexpr std::size_t kMostInLegend = 14;
constexpr int kNamesBelowEachOther = 7;
constexpr double kNoStretch = 0.001; // of a row or column that is as large as it has to be

// A little more than the values, and never nothing.
QCPRange axisRange(QCPRange values) {
    const double room = kRoomForValues * values.size();
    if (room > 0.0)
        return {values.lower - room, values.upper + room};
    const double around = std::max(0.05 * std::abs(values.lower), 0.5);
    return {values.lower - around, values.upper + around};
}
} // namespace

StripPlot::StripPlot(QWidget* parent) : QCustomPlot(parent) {
    setNoAntialiasingOnDrag(true);
    setAutoAddPlottableToLegend(false);
    clearStrips(); // of the library's own
    makeStrips();
}

StripPlot::~StripPlot() = default;

void StripPlot::setDocument(PlotDocument document) {
    clearStrips(); // which refer to the document
    document_ = std::move(document);
    times_ = document_.times;
    makeStrips();
}

void StripPlot::setTheme(const PlotTheme& theme) {
    clearStrips();
    theme_ = &theme;
    makeStrips();
}

void StripPlot::setTimes(TimeRange times) {
    const TimeRange& all = document_.times;
    const double most = std::max(all.end - all.begin, kLeastSeconds);
    const double seconds = std::clamp(times.end - times.begin, kLeastSeconds, most);
    // Where less than the least shows, about the middle of what was asked for.
    const double begin = (times.begin + times.end - seconds) / 2.0;
    times_.begin = std::clamp(begin, all.begin, std::max(all.end - seconds, all.begin));
    times_.end = times_.begin + seconds;
    fitCurves();
    replot(rpQueuedReplot);
}

void StripPlot::arrange() {
    // Margins depend on the numbers at the axes, and these on the room that the margins leave.
    for (int pass = 0; pass < 2; ++pass) {
        plotLayout()->update(QCPLayoutElement::upPreparation);
        plotLayout()->update(QCPLayoutElement::upMargins);
        plotLayout()->update(QCPLayoutElement::upLayout);
        fitCurves();
    }
}

std::optional<std::size_t> StripPlot::stripAt(const QPointF& place) const {
    for (std::size_t i = 0; i < strips_.size(); ++i) {
        const QRect& rect = strips_[i]->outerRect();
        if (place.y() >= rect.top() && place.y() <= rect.bottom())
            return i;
    }
    return std::nullopt;
}

double StripPlot::timeAt(double x) const {
    return strips_.empty() ? 0.0 : strips_.front()->axis(QCPAxis::atBottom)->pixelToCoord(x);
}

void StripPlot::resizeEvent(QResizeEvent* event) {
    QCustomPlot::resizeEvent(event);
    arrange();
}

QFont StripPlot::textFont(double factor) {
    QFont font(QStringLiteral("sans-serif"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(static_cast<int>(std::lround(kLetterPixels * factor)));
    return font;
}

void StripPlot::clearStrips() {
    clearItems();
    clearPlottables();
    plotLayout()->clear();
    strips_.clear();
    curves_.clear();
}

void StripPlot::makeStrips() {
    setBackground(theme_->background);
    plotLayout()->setRowSpacing(2);
    int row = 0;
    if (!document_.title.isEmpty()) {
        auto* const title = new QCPTextElement(this, document_.title, textFont(1.25));
        title->setTextColor(theme_->text);
        plotLayout()->addElement(row++, 0, title);
    }
    auto* const margins = new QCPMarginGroup(this);
    for (const PlotStrip& strip : document_.strips) {
        const bool isLast = &strip == &document_.strips.back();
        QCPAxisRect* const rect = makeStrip(strip, isLast);
        rect->setMarginGroup(QCP::msLeft | QCP::msRight, margins);
        plotLayout()->addElement(row, 0, rect);
        if (strip.curves.size() > 1)
            makeLegend(row, curves_.back());
        ++row;
        strips_.push_back(rect);
        makeMarks(strips_.size() - 1);
    }
    if (stripsMade_)
        stripsMade_();
    arrange();
    replot(rpQueuedReplot);
}

QCPAxisRect* StripPlot::makeStrip(const PlotStrip& strip, bool isLast) {
    auto* const rect = new QCPAxisRect(this);
    rect->setMinimumMargins(QMargins(4, 2, 8, 2));
    QCPAxis& times = *rect->axis(QCPAxis::atBottom);
    QCPAxis& values = *rect->axis(QCPAxis::atLeft);
    values.setLabel(strip.unit.isEmpty() ? strip.title : QStringLiteral("%1 (%2)").arg(strip.title, strip.unit));
    values.setNumberPrecision(6);
    values.setNumberFormat(QStringLiteral("g"));
    values.ticker()->setTickCount(4);
    times.setTickLabels(isLast);
    if (isLast)
        times.setLabel(document_.timeTitle);
    colour(*rect);
    std::vector<CurvePlottable*> curves;
    for (const PlotCurve& curve : strip.curves) {
        auto* const plottable = new CurvePlottable(*rect, curve);
        plottable->setPen(QPen(
            curve.colour < 0 ? theme_->frame : theme_->curve(curve.colour), kLineWidth,
            curve.isDashed ? Qt::DashLine : Qt::SolidLine));
        curves.push_back(plottable);
    }
    curves_.push_back(std::move(curves));
    return rect;
}

// The names of a strip's curves at its right.
void StripPlot::makeLegend(int row, const std::vector<CurvePlottable*>& curves) {
    // At the top, with nothing below.
    auto* const names = new QCPLegend;
    auto* const column = new QCPLayoutGrid;
    plotLayout()->addElement(row, 1, column);
    plotLayout()->setColumnStretchFactor(1, kNoStretch);
    column->addElement(0, 0, names);
    column->addElement(1, 0, new QCPLayoutElement(this));
    column->setRowStretchFactor(0, kNoStretch);
    names->setLayer(QStringLiteral("legend"));
    names->setFont(textFont(0.85));
    names->setTextColor(theme_->text);
    names->setBrush(Qt::NoBrush);
    names->setBorderPen(Qt::NoPen);
    names->setRowSpacing(-2);
    names->setIconSize(18, 8);
    names->setFillOrder(QCPLayoutGrid::foRowsFirst);
    names->setWrap(kNamesBelowEachOther);
    names->setMargins(QMargins(2, 2, 4, 2));
    for (std::size_t i = 0; i < std::min(curves.size(), kMostInLegend); ++i)
        curves[i]->addToLegend(names);
}

void StripPlot::attach(QCPAbstractItem& item, QCPItemPosition& position, std::size_t strip) {
    QCPAxisRect& rect = *strips_[strip];
    item.setClipAxisRect(&rect);
    position.setAxisRect(&rect);
    position.setAxes(rect.axis(QCPAxis::atBottom), rect.axis(QCPAxis::atLeft));
    position.setTypeX(QCPItemPosition::ptPlotCoords);
    position.setTypeY(QCPItemPosition::ptAxisRectRatio);
}

// Dotted lines at the named times, with the names in the first strip.
void StripPlot::makeMarks(std::size_t strip) {
    for (const EngagementEvent& mark : document_.marks) {
        auto* const line = new QCPItemLine(this);
        attach(*line, *line->start, strip);
        attach(*line, *line->end, strip);
        line->start->setCoords(mark.time, 0.0);
        line->end->setCoords(mark.time, 1.0);
        line->setPen(QPen(theme_->mark, 1.0, Qt::DotLine));
        line->setSelectable(false);
        if (strip > 0)
            continue;
        auto* const name = new QCPItemText(this);
        attach(*name, *name->position, strip);
        name->position->setCoords(mark.time, 1.0);
        name->setPositionAlignment(Qt::AlignLeft | Qt::AlignTop);
        name->setRotation(-90.0);
        name->setText(mark.name);
        name->setFont(textFont(0.8));
        name->setColor(theme_->mark);
        name->setSelectable(false);
    }
}

void StripPlot::colour(QCPAxisRect& strip) {
    strip.setupFullAxesBox(true);
    for (QCPAxis* const axis : strip.axes()) {
        axis->setBasePen(QPen(theme_->frame));
        axis->setTickPen(QPen(theme_->frame));
        axis->setSubTickPen(QPen(theme_->frame));
        axis->setTickLabelColor(theme_->text);
        axis->setLabelColor(theme_->text);
        axis->setTickLabelFont(textFont(0.85));
        axis->setLabelFont(textFont(0.9));
        axis->grid()->setPen(QPen(theme_->grid));
        axis->grid()->setZeroLinePen(QPen(theme_->grid.darker(130)));
        axis->setLabelPadding(3);
    }
}

void StripPlot::fitCurves() {
    for (std::size_t i = 0; i < strips_.size(); ++i) {
        const int columns = std::max(strips_[i]->width(), 1);
        QCPRange values;
        bool areAny = false;
        for (CurvePlottable* const curve : curves_[i]) {
            curve->fit(times_, columns);
            bool isFound = false;
            const QCPRange its = curve->getValueRange(isFound);
            if (!isFound)
                continue;
            if (areAny)
                values.expand(its);
            else
                values = its;
            areAny = true;
        }
        strips_[i]->axis(QCPAxis::atBottom)->setRange(times_.begin, times_.end);
        if (areAny)
            values.upper = std::max(std::min(values.upper, document_.strips[i].greatest), values.lower);
        strips_[i]->axis(QCPAxis::atLeft)->setRange(areAny ? axisRange(values) : QCPRange(0.0, 1.0));
    }
}
} // namespace sorvane
