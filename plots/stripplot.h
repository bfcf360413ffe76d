// Draws a document of curves: strips below each other over one time axis.
#pragma once

#include <functional>
#include <vector>

#include <qcustomplot.h>

#include "plotdocument.h"
#include "plottheme.h"

namespace sorvane {
class CurvePlottable;

class StripPlot : public QCustomPlot {
public:
    explicit StripPlot(QWidget* parent = nullptr);
    ~StripPlot() override;

    // With all of its times in view.
    void setDocument(PlotDocument document);
    const PlotDocument& document() const { return document_; }
    // The theme must outlive the plot.
    void setTheme(const PlotTheme& theme);
    const PlotTheme& theme() const { return *theme_; }

    // The times in view; within the document's, and some milliseconds apart at least.
    void setTimes(TimeRange times);
    const TimeRange& times() const { return times_; }
    void showAllTimes() { setTimes(document_.times); }
    // Sizes all parts, picks the points that show and fits the axes of values to them. To be called before the plot is
    // drawn without a window; a window does so by itself.
    void arrange();

    // By number from the top.
    QCPAxisRect& strip(std::size_t number) const { return *strips_[number]; }
    std::size_t stripCount() const { return strips_.size(); }
    // The strip at a place in pixels of the widget, with the space to its left and right.
    std::optional<std::size_t> stripAt(const QPointF& place) const;
    double timeAt(double x) const;

    // Clips an item to a strip and gives one of its positions a time for x, and for y a part of the strip's height from
    // its top.
    void attach(QCPAbstractItem& item, QCPItemPosition& position, std::size_t strip);
    // So many times as large as the plot's letters.
    static QFont textFont(double factor);

    // Called when the strips have been made anew; what was attached to those before is gone.
    void onStripsMade(std::function<void()> act) { stripsMade_ = std::move(act); }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void clearStrips();
    void makeStrips();
    QCPAxisRect* makeStrip(const PlotStrip& strip, bool isLast);
    void makeLegend(int row, const std::vector<CurvePlottable*>& curves);
    void makeMarks(std::size_t strip);
    void colour(QCPAxisRect& strip);
    void fitCurves();

    PlotDocument document_;
    const PlotTheme* theme_ = &lightPlotTheme();
    TimeRange times_;
    std::vector<QCPAxisRect*> strips_;                 // of the plot's layout
    std::vector<std::vector<CurvePlottable*>> curves_; // of the plot, by strip
    std::function<void()> stripsMade_;
};
} // namespace sorvane
