// The window of curves over time beside the viewer.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include <QWidget>

#include "engagementid.h"
#include "measurecurves.h"
#include "plotfile.h"
#include "plotoverlay.h"

class QLabel;
class QMenu;

namespace sorvane {
class PlotMouse;
class StripPlot;

// An engagement that can be plotted.
struct PlotCandidate {
    EngagementId id{};
    QString name;
};

// What the target of an engagement radiates, or a text that says why it isn't at hand.
struct PlotRadiation {
    std::shared_ptr<const TargetRadiometry> radiometry{};
    QString text{};
};

// What the window asks for.
struct PlotSource {
    // All that there are; the plotted one is the one that the viewer follows.
    std::function<std::vector<PlotCandidate>()> candidates;
    std::function<std::optional<EngagementId>()> followed;
    std::function<PlottedEngagement(EngagementId)> engagement;
    // Of those whose measures need it, each in its place; nobody wants that of others any more. The window is to be
    // drawn anew once it is there.
    std::function<std::vector<PlotRadiation>(const std::vector<EngagementId>&)> radiations;
    // W/sr of a flare of brightness 1. Where it is set the radiation is another one, and the window is drawn anew.
    std::function<double()> flareIntensity;
    std::function<void(double)> setFlareIntensity;
    // Takes the viewer's clock to a time of the followed engagement.
    std::function<void(double)> goTo;
};

class PlotWindow : public QWidget {
public:
    PlotWindow(QWidget* viewer, PlotSource source);
    ~PlotWindow() override;

    // Another engagement may be followed, or some have come or gone. Draws anew when that changes what is plotted.
    void refresh();
    // What is plotted has other samples or another unit. It is drawn anew by the next refresh().
    void markStale() { isStale_ = true; }
    void setNow(double time);
    void setLoop(std::optional<TimeRange> range);
    // A text over the plots, such as how far something has come; empty for none.
    void setNotice(const QString& text);

    StripPlot& plot() { return *plot_; }
    PlotOverlay& overlay() { return overlay_; }
    // The menu for a place on a strip, or beside them.
    void fillMenu(QMenu& menu, std::optional<std::size_t> strip);

protected:
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    // The followed one first.
    std::vector<EngagementId> chosen() const;
    struct Content {
        PlotDocument document;
        QString lacking; // what of it isn't at hand, and why; empty where nothing lacks
    };
    Content contentOf(const std::vector<EngagementId>& ids, CurveDigits digits) const;
    struct Saved {
        QByteArray bytes;
        QString lacking;
    };
    Saved saved(PlotFormat format);
    void plotAnew();
    void moveStrip(std::size_t from, std::size_t to);
    void addMeasureMenu(QMenu& menu);
    void askFlareIntensity();
    void addOverlayMenu(QMenu& menu);
    void addAlignmentMenu(QMenu& menu);
    void saveAs();
    void useTheme();
    void placeOverlay();

    PlotSource source_;
    StripPlot* plot_; // of the window's children
    QLabel* notice_;  // likewise
    QString lacking_; // what of the plots isn't at hand, and why
    PlotOverlay overlay_;
    std::unique_ptr<PlotMouse> mouse_; // of the plot and the overlay
    std::vector<const Measure*> measures_ = usualPlotMeasures();
    std::set<EngagementId> overlaid_;
    std::vector<EngagementId> plotted_;
    PlotAlignment alignment_ = PlotAlignment::Start;
    std::optional<bool> isDark_; // as the palette is without one
    double now_ = 0.0;
    std::optional<TimeRange> loop_;
    bool isStale_ = true;
};
} // namespace sorvane
