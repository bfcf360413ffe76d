// What the mouse does on a plot.
#pragma once

#include <functional>
#include <optional>

#include <QObject>
#include <QPoint>

class QMouseEvent;
class QRubberBand;
class QWheelEvent;

namespace sorvane {
class PlotOverlay;
class StripPlot;

// Left: a click or a drag goes to a time, Shift and Ctrl set the cursors A and B, a drag from the names at the left
// moves a strip, a double click shows all times. Right: a drag zooms, a click opens the menu. Middle: a drag moves the
// times in view. The wheel zooms about the pointer, whose time the strips' values are shown for.
class PlotMouse : public QObject {
public:
    struct Actions {
        std::function<void(double)> goTo; // a time of the plot's axis
        std::function<void(std::size_t from, std::size_t to)> moveStrip;
        std::function<void(const QPoint& global, std::optional<std::size_t> strip)> openMenu;
    };

    // Both must outlive it.
    PlotMouse(StripPlot& plot, PlotOverlay& overlay, Actions actions);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void press(const QMouseEvent& event);
    void move(const QMouseEvent& event);
    void release(const QMouseEvent& event);
    void zoom(const QWheelEvent& event);

    StripPlot& plot_;
    PlotOverlay& overlay_;
    Actions actions_;
    QRubberBand* band_; // of the plot
    QPoint pressed_;
    double pressedTime_ = 0.0;
    std::optional<std::size_t> movedStrip_;
};
} // namespace sorvane
