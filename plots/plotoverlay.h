// What moves over a plot: now, the loop, two cursors and what lies under the mouse.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "plotdocument.h"

class QCPItemLine;
class QCPItemRect;
class QCPItemText;

namespace sorvane {
class StripPlot;

// Drawn on a layer of its own: when only this changes, the curves stay as they are painted. Takes the plot's call of
// strips that are made.
class PlotOverlay {
public:
    explicit PlotOverlay(StripPlot& plot);
    ~PlotOverlay();
    PlotOverlay(const PlotOverlay&) = delete;
    PlotOverlay& operator=(const PlotOverlay&) = delete;

    // Times of the plot's axis; nothing hides what there is.
    void setNow(std::optional<double> time);
    void setLoop(std::optional<TimeRange> range);
    void setPointer(std::optional<double> time);
    enum Cursor : std::size_t { A, B };
    void setCursor(Cursor cursor, std::optional<double> time);
    std::optional<double> cursor(Cursor cursor) const { return cursors_[cursor]; }

    // What a strip says of its curves at a time, one after the other: "target 1.25°, flare 3 0.4°".
    QString valuesAt(std::size_t strip, double time) const;
    // How they differ between the cursors, when both are set.
    QString differences(std::size_t strip) const;

private:
    struct StripItems {
        QCPItemRect* loop = nullptr;
        QCPItemLine* now = nullptr;
        QCPItemLine* pointer = nullptr;
        std::array<QCPItemLine*, 2> cursors{};
        std::array<QCPItemText*, 2> cursorNames{};
        QCPItemText* values = nullptr;
    };

    StripItems makeItems(std::size_t strip);
    QCPItemLine* makeLine(std::size_t strip);
    QCPItemText* makeText(std::size_t strip);
    void makeAll();
    void placeNow();
    void placeLoop();
    void placePointer();
    void placeCursors();
    void writeValues();
    QString textOf(std::size_t strip) const;
    void draw();

    StripPlot& plot_;
    std::vector<StripItems> items_; // of the plot
    std::optional<double> now_;
    std::optional<double> pointer_;
    std::optional<TimeRange> loop_;
    std::array<std::optional<double>, 2> cursors_;
};
} // namespace sorvane
