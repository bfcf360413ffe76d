// What the plots of a set's columns have in common: axes, colours, and brushing with the mouse.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <qcustomplot.h>

#include "plottheme.h"

namespace sorvane {
// A column of a set as an axis shows it.
struct PlottedColumn {
    QString title;                   // with its unit
    std::vector<double> values;      // by row; NaN where there is none
    std::vector<std::string> labels; // what the values number; empty where they are numbers
};

// Left drag brushes, a click ends the brushing, the wheel zooms, a double click shows all.
class SetPlot : public QCustomPlot {
public:
    explicit SetPlot(QWidget* parent);

    // Rows that stand out, one for each row; none when it is empty.
    void setMarks(std::span<const std::uint8_t> marks);
    // The theme must outlive the plot.
    void setTheme(const PlotTheme& theme);
    // Called with what was brushed, in the axes' units; with nothing when a click ends it.
    void onBrushed(std::function<void(const std::optional<QRectF>&)> act) { brushed_ = std::move(act); }

    QSize sizeHint() const override { return {360, 240}; }
    QSize minimumSizeHint() const override { return {160, 110}; }

protected:
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    // Draws `marks()` anew.
    virtual void showMarks() = 0;
    virtual void useColours() = 0;
    virtual void showAll() = 0;

    const std::vector<std::uint8_t>& marks() const { return marks_; }
    bool hasMarks() const;
    const PlotTheme& theme() const { return *theme_; }
    // Title and ticks, texts for a column of texts.
    static void labelAxis(QCPAxis& axis, const PlottedColumn& column);
    // With a little room; of no values, something.
    static QCPRange rangeOf(const PlottedColumn& column);

private:
    void colourAxes();

    std::vector<std::uint8_t> marks_;
    const PlotTheme* theme_ = &lightPlotTheme();
    std::function<void(const std::optional<QRectF>&)> brushed_;
};
} // namespace sorvane
