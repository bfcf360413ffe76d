// The plot window's place in the viewer: what it can plot, and when it has to hear of a change.
#include "plotting.h"

#include <algorithm>
#include <utility>

#include <QDoubleSpinBox>
#include <QScreen>

#include "aircraftwidget.h"
#include "currentengagement.h"
#include "playbackclock.h"
#include "plotwindow.h"
#include "preferences.h"
#include "targetradiation.h"
#include "timesteps.h"

namespace sorvane {
namespace {
constexpr int kHeight = 480; // pixels, of a new window
} // namespace

Plotting::Plotting(const Parts& parts, QObject* parent)
    : QObject(parent), parts_(parts), radiation_(new TargetRadiation(this)) {
    connect(radiation_, &TargetRadiation::advanced, this, [this](const QString& text) { plots_->setNotice(text); });
    connect(radiation_, &TargetRadiation::changed, this, [this] {
        plots_->markStale();
        plots_->refresh();
    });
    connect(&parts_.engagements, &EngagementList::replaced, this, [this] {
        if (plots_ != nullptr)
            plots_->markStale();
    });
    connect(&parts_.box, &QDoubleSpinBox::valueChanged, this, [this](double time) {
        if (plots_ != nullptr)
            plots_->setNow(time);
    });
}

Plotting::~Plotting() {
    if (plots_ != nullptr)
        Preferences().keepGeometry(*plots_);
}

void Plotting::toggle() {
    if (plots_ == nullptr)
        open();
    else
        plots_->setVisible(!plots_->isVisible());
}

void Plotting::refresh() {
    if (plots_ != nullptr)
        plots_->refresh();
}

void Plotting::showUnit() {
    if (plots_ == nullptr)
        return;
    plots_->markStale();
    plots_->refresh();
}

void Plotting::showLoop() {
    if (plots_ == nullptr)
        return;
    const Transport& transport = parts_.clock.transport();
    plots_->setLoop(
        transport.isLooping() ? std::optional(TimeRange{transport.inPoint(), transport.outPoint(parts_.clock.range())})
                              : std::nullopt);
}

void Plotting::open() {
    plots_ = new PlotWindow(
        &parts_.window,
        {.candidates =
             [this] {
                 std::vector<PlotCandidate> candidates;
                 for (const LoadedEngagement& engagement : parts_.engagements)
                     candidates.push_back({engagement.id(), engagement.name()});
                 return candidates;
             },
         .followed = [this]() -> std::optional<EngagementId> {
             const LoadedEngagement* const current = parts_.current.get();
             return current == nullptr ? std::nullopt : std::optional(current->id());
         },
         .engagement =
             [this](EngagementId id) {
                 const LoadedEngagement& engagement = *parts_.engagements.find(id);
                 auto measured = engagement.measured(parts_.unit());
                 const MeasuredEngagement* const plotted = measured.get();
                 return PlottedEngagement{engagement.name(), plotted, engagement.facts().events, std::move(measured)};
             },
         .radiations = [this](const std::vector<EngagementId>& ids) { return radiationsOf(ids); },
         .flareIntensity = [this] { return parts_.view.flareUnits().intensity; },
         .setFlareIntensity = [this](double intensity) { setFlareIntensity(intensity); },
         .goTo =
             [this](double time) {
                 parts_.steps.to(std::clamp(time, parts_.box.minimum(), parts_.box.maximum()));
             }});
    const QRect viewer = parts_.window.frameGeometry();
    const QRect screen = parts_.window.screen()->availableGeometry();
    QRect place(viewer.left(), viewer.bottom() + 1, viewer.width(), kHeight);
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    plots_->setGeometry(place);
    Preferences().restoreGeometry(*plots_);
    new KeyFilter(*plots_, parts_.runKey);
    plots_->setNow(parts_.box.value());
    showLoop();
    plots_->show();
}

std::vector<PlotRadiation> Plotting::radiationsOf(const std::vector<EngagementId>& ids) {
    std::vector<const LoadedEngagement*> engagements;
    engagements.reserve(ids.size());
    for (const EngagementId id : ids)
        engagements.push_back(parts_.engagements.find(id));
    std::vector<PlotRadiation> radiations = radiation_->of(engagements);
    for (PlotRadiation& radiation : radiations)
        if (radiation.radiometry != nullptr)
            radiation.radiometry = std::make_shared<const TargetRadiometry>(
                radiation.radiometry->withFlareScale(parts_.view.flareUnits().intensity));
    return radiations;
}

// Not kept for the next session: it says what the files at hand mean.
void Plotting::setFlareIntensity(double intensity) {
    FlareUnits units = parts_.view.flareUnits();
    units.intensity = intensity;
    parts_.view.setFlareUnits(units);
    plots_->markStale();
    plots_->refresh();
}
} // namespace sorvane
