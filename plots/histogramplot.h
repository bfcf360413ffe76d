// A histogram of a set's column, with the marked rows in it.
#pragma once

#include "histogram.h"
#include "setplot.h"

namespace sorvane {
class HistogramPlot : public SetPlot {
public:
    explicit HistogramPlot(QWidget* parent = nullptr);

    // Without marks.
    void setColumn(PlottedColumn column);
    const PlottedColumn& column() const { return column_; }
    const Histogram& histogram() const { return histogram_; }

protected:
    void showMarks() override;
    void useColours() final;
    void showAll() final;

private:
    // All, but for a few far away from the others.
    void showMost();

    PlottedColumn column_;
    Histogram histogram_;
    QCPBars* all_; // of the plot
    QCPBars* marked_;
};
} // namespace sorvane
