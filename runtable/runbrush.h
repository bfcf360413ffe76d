// What was brushed in a plot of a set: ranges of its columns.
#pragma once

#include <cstdint>
#include <vector>

#include <QRectF>

#include "histogramplot.h"
#include "scatterplot.h"

namespace sorvane {
// Holds for the rows that come to be plotted later, too. Of the plots, which must outlive it.
class RunBrush {
public:
    // Areas in the units of the plot's axes. `name` and the other two: the columns' names.
    static RunBrush over(const HistogramPlot& plot, const QString& name, const QRectF& area);
    static RunBrush over(const ScatterPlot& plot, const QString& across, const QString& up, const QRectF& area);

    // 1 for each row that lies within.
    std::vector<std::uint8_t> marks() const;
    // The same as a condition on rows.
    QString condition() const;

private:
    struct Range {
        const PlottedColumn* column = nullptr;
        QString name;
        double from = 0.0;
        double to = 0.0;

        bool contains(std::size_t row) const { return column->values[row] >= from && column->values[row] <= to; }
    };

    explicit RunBrush(std::vector<Range> ranges) : ranges_(std::move(ranges)) {}

    std::vector<Range> ranges_; // at least one; all of them hold
};
} // namespace sorvane
