// Two columns of a set against each other, a point for each row.
#pragma once

#include "setplot.h"

namespace sorvane {
class PointCloud;

class ScatterPlot : public SetPlot {
public:
    explicit ScatterPlot(QWidget* parent = nullptr);

    // Of the same rows; without marks.
    void setColumns(PlottedColumn across, PlottedColumn up);
    const PlottedColumn& across() const { return across_; }
    const PlottedColumn& up() const { return up_; }

protected:
    void showMarks() override {}
    void useColours() override {}
    void showAll() final;

private:
    friend class PointCloud;

    PlottedColumn across_;
    PlottedColumn up_;
};
} // namespace sorvane
