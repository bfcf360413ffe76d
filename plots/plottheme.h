// The colours of plots.
#pragma once

#include <array>

#include <QColor>

namespace sorvane {
struct PlotTheme {
    QColor background;
    QColor text;
    QColor frame; // of the strips
    QColor grid;
    QColor mark; // of events
    QColor now;
    QColor cursor;
    QColor loop; // over what is looped
    std::array<QColor, 8> curves;

    QColor curve(int number) const { return curves[static_cast<std::size_t>(number) % curves.size()]; }
};

// The curves' colours are told apart by people who see fewer of them, too.
const PlotTheme& lightPlotTheme();
const PlotTheme& darkPlotTheme();
} // namespace sorvane
