// The window of curves over time beside the viewer.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include <QWidget>

#include "measurecurves.h"
#include "plotoverlay.h"

class QMenu;

namespace sorvane {
class PlotMouse;
class StripPlot;

// An engagement that can be plotted, by a number that stays its own.
struct PlotCandidate {
    std::uint32_t number = 0;
    QString name;
};

// What the window asks for.
struct PlotSource {
    // All that there are; the plotted one is the one that the viewer follows.
    std::function<std::vector<PlotCandidate>()> candidates;
    std::function<std::optional<std::uint32_t>()> followed;
    // Stays as it is until the window is told that engagements have changed.
    std::function<PlottedEngagement(std::uint32_t)> engagement;
    // Takes the viewer's clock to a time of the followed engagement.
    std::function<void(double)> goTo;
};

class PlotWindow : public QWidget {
public:
    PlotWindow(QWidget* viewer, PlotSource source);
    ~PlotWindow() override;

    // Another engagement is followed, or some have come, gone or other samples.
    void refresh();
    void setNow(double time);
    void setLoop(std::optional<TimeRange> range);

    StripPlot& plot() { return *plot_; }
    PlotOverlay& overlay() { return overlay_; }
    const std::vector<const Measure*>& measures() const { return measures_; }
    // The menu for a place on a strip, or beside them.
    void fillMenu(QMenu& menu, std::optional<std::size_t> strip);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void setMeasures(std::vector<const Measure*> measures);
    void moveStrip(std::size_t from, std::size_t to);
    void addMeasureMenu(QMenu& menu);
    void addOverlayMenu(QMenu& menu);
    void addAlignmentMenu(QMenu& menu);
    void saveAs();
    void useTheme();
    void placeOverlay();

    PlotSource source_;
    StripPlot* plot_; // of the window's children
    PlotOverlay overlay_;
    std::unique_ptr<PlotMouse> mouse_; // of the plot and the overlay
    std::vector<const Measure*> measures_ = usualPlotMeasures();
    std::set<std::uint32_t> overlaid_;
    PlotAlignment alignment_ = PlotAlignment::Start;
    std::optional<bool> isDark_; // as the palette is without one
    double zero_ = 0.0;          // the followed engagement's time at which the axis has 0
    double now_ = 0.0;
    std::optional<TimeRange> loop_;
    bool isStale_ = true;
};
} // namespace sorvane
