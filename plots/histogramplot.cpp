// A histogram of a set's column, with the marked rows in it.
#include "histogramplot.h"

#include <algorithm>

namespace sorvane {
namespace {
constexpr double kRoomAbove = 1.06;
constexpr int kFaded = 110; // of 255, what isn't marked while something is
} // namespace

HistogramPlot::HistogramPlot(QWidget* parent)
    : SetPlot(parent), all_(new QCPBars(xAxis, yAxis)), marked_(new QCPBars(xAxis, yAxis)) {
    for (QCPBars* const bars : {all_, marked_}) {
        bars->setSelectable(QCP::stNone);
        bars->setAntialiased(false);
    }
    axisRect()->setRangeZoom(Qt::Horizontal);
    xAxis->grid()->setVisible(false);
    yAxis->setLabel(QStringLiteral("runs"));
    yAxis->ticker()->setTickCount(4);
    useColours();
    showAll();
}

void HistogramPlot::setColumn(PlottedColumn column) {
    column_ = std::move(column);
    histogram_ = histogramOf(column_.values);
    labelAxis(*xAxis, column_);
    QVector<double> places;
    QVector<double> heights;
    for (std::size_t i = 0; i < histogram_.counts.size(); ++i) {
        places << histogram_.low + (static_cast<double>(i) + 0.5) * histogram_.width;
        heights << static_cast<double>(histogram_.counts[i]);
    }
    all_->setData(places, heights, true);
    for (QCPBars* const bars : {all_, marked_})
        bars->setWidth(histogram_.width);
    showMost();
    setMarks({});
}

void HistogramPlot::showMost() {
    showAll();
    if (histogram_.counts.empty())
        return;
    const auto [low, high] = mostOf(column_.values);
    const auto edge = [this](double value, double steps) {
        return histogram_.low + (static_cast<double>(histogram_.stepOf(value)) + steps) * histogram_.width;
    };
    xAxis->setRange(edge(low, 0.0), edge(high, 1.0));
}

void HistogramPlot::showMarks() {
    const std::vector<std::size_t> counts = countMarked(histogram_, column_.values, marks());
    QVector<double> places;
    QVector<double> heights;
    for (std::size_t i = 0; i < counts.size(); ++i) {
        places << histogram_.low + (static_cast<double>(i) + 0.5) * histogram_.width;
        heights << static_cast<double>(counts[i]);
    }
    marked_->setData(places, heights, true);
    useColours();
}

void HistogramPlot::useColours() {
    QColor fill = theme().curve(0);
    if (hasMarks())
        fill.setAlpha(kFaded);
    all_->setBrush(fill);
    marked_->setBrush(theme().curve(1));
    for (QCPBars* const bars : {all_, marked_})
        bars->setPen(QPen(theme().background));
}

void HistogramPlot::showAll() {
    if (histogram_.counts.empty()) {
        xAxis->setRange(0.0, 1.0);
        yAxis->setRange(0.0, 1.0);
        return;
    }
    xAxis->setRange(histogram_.low, histogram_.high());
    yAxis->setRange(0.0, kRoomAbove * static_cast<double>(std::ranges::max(histogram_.counts)));
}
} // namespace sorvane
