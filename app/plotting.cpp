// The plot window's place in the viewer: what it can plot, and when it has to hear of a change.
#include "plotting.h"

#include <algorithm>

#include <QDoubleSpinBox>
#include <QFileInfo>
#include <QScreen>

#include "currentengagement.h"
#include "etxyz.h"
#include "playbackclock.h"
#include "plotwindow.h"
#include "preferences.h"
#include "timesteps.h"

namespace sorvane {
namespace {
constexpr int kHeight = 480; // pixels, of a new window

std::uint32_t numberOf(EngagementId id) {
    return static_cast<std::uint32_t>(id);
}

QString nameOf(const LoadedEngagement& engagement) {
    return QFileInfo(engagement.path()).fileName();
}
} // namespace

Plotting::Plotting(const Parts& parts, QObject* parent) : QObject(parent), parts_(parts) {
    const auto forget = [this](const LoadedEngagement& engagement) {
        measured_.erase(engagement.id());
    };
    connect(&parts_.engagements, &EngagementList::replaced, this, forget);
    connect(&parts_.engagements, &EngagementList::aboutToBeRemoved, this, forget);
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
                     candidates.push_back({numberOf(engagement.id()), nameOf(engagement)});
                 return candidates;
             },
         .followed = [this]() -> std::optional<std::uint32_t> {
             const LoadedEngagement* const current = parts_.current.get();
             return current == nullptr ? std::nullopt : std::optional(numberOf(current->id()));
         },
         .engagement =
             [this](std::uint32_t number) {
                 const LoadedEngagement& engagement = *parts_.engagements.find(EngagementId{number});
                 PlottedEngagement plotted{.name = nameOf(engagement), .measured = &measured(engagement), .events = {}};
                 for (const EngagementEvent& event : engagement.facts().events)
                     plotted.events.push_back({event.time, event.name});
                 return plotted;
             },
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

const MeasuredEngagement& Plotting::measured(const LoadedEngagement& engagement) {
    std::unique_ptr<MeasuredEngagement>& kept = measured_[engagement.id()];
    const LengthUnit unit = parts_.unit();
    if (kept == nullptr || kept->unit() != unit)
        kept = std::make_unique<MeasuredEngagement>(engagement.data().samples, engagement.data().fieldOfView, unit);
    return *kept;
}
} // namespace sorvane
