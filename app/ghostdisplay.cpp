// Ghosts in the viewer: which engagements are drawn so, in which colours, and from when their time counts.
#include "ghostdisplay.h"

#include <algorithm>
#include <cmath>

#include <QElapsedTimer>
#include <QTimer>

#include "aircraftwidget.h"
#include "currentengagement.h"
#include "etxyz.h"
#include "ghostlegend.h"
#include "measure.h"
#include "viewnotice.h"

namespace sorvane {
namespace {
constexpr int kPieceMilliseconds = 40;
constexpr double kHighest = 0.95; // the part of the ghosts that the colours are spread over

// From near to far: told apart by people who see fewer colours, too, and bright on black.
constexpr QRgb kScale[] = {0xFFFFE04B, 0xFFFFB347, 0xFFF4805A, 0xFFD85A86,
                           0xFFA75BB5, 0xFF7A6FD0, 0xFF4F8FE0, 0xFF36B4E5};
constexpr QRgb kNotDecoyed = 0xFF56B4E9;
constexpr QRgb kDecoyed = 0xFFE69F00;
constexpr QRgb kUnknown = 0xFF909090;

std::array<float, 3> channels(QRgb colour) {
    constexpr float kMost = 255.0F;
    return {
        static_cast<float>(qRed(colour)) / kMost, static_cast<float>(qGreen(colour)) / kMost,
        static_cast<float>(qBlue(colour)) / kMost};
}
} // namespace

GhostDisplay::GhostDisplay(const Parts& parts, QObject* parent)
    : QObject(parent), parts_(parts), legend_(new GhostLegend(parts.view)), rest_(new QTimer(this)) {
    rest_->setSingleShot(true);
    connect(rest_, &QTimer::timeout, this, [this] { refresh(); });
    connect(&parts_.engagements, &EngagementList::fileRead, this, [this](const LoadedEngagement& read) {
        facts_.erase(read.id());
    });
    connect(&parts_.engagements, &EngagementList::removed, this, [this](EngagementId id) { facts_.erase(id); });
}

void GhostDisplay::toggle() {
    isOn_ = !isOn_;
    refresh();
    if (isOn_)
        tell();
    else
        parts_.notice.notify(QStringLiteral("Ghosts off"));
}

void GhostDisplay::cycleMeasure() {
    if (isOn_)
        measure_ = measure_ == Measure::Decoyed ? Measure::ClosestApproach : Measure::Decoyed;
    isOn_ = true;
    refresh();
    tell();
}

void GhostDisplay::cycleAlignment() {
    if (isOn_)
        alignment_ = alignment_ == Alignment::ClosestApproach
                         ? Alignment::Launch
                         : static_cast<Alignment>(static_cast<int>(alignment_) + 1);
    isOn_ = true;
    refresh();
    tell();
}

void GhostDisplay::refresh() {
    if (isOn_ && !workOut())
        rest_->start(0);
    show();
}

void GhostDisplay::tell() {
    constexpr const char* kAlignments[] = {"launch", "first flare", "closest approach"};
    const std::size_t others = parts_.engagements.size() - (parts_.current.get() == nullptr ? 0 : 1);
    if (others == 0)
        return parts_.notice.notify(QStringLiteral("Ghosts: there is no other engagement"));
    parts_.notice.notify(QStringLiteral("Ghosts: %1, in step at the %2")
                             .arg(others)
                             .arg(QLatin1String(kAlignments[static_cast<std::size_t>(alignment_)])));
}

double GhostDisplay::Facts::timeOf(Alignment alignment) const {
    const double time = alignment == Alignment::Launch       ? launch
                        : alignment == Alignment::FirstFlare ? firstFlare
                                                             : closestTime;
    return std::isfinite(time) ? time : launch;
}

GhostDisplay::Facts GhostDisplay::factsOf(const LoadedEngagement& engagement) {
    const etxyz& data = engagement.data();
    const MeasuredEngagement measured(data.samples.series(), data.fieldOfView);
    const EngagementResults results = resultsOf(measured);
    return {
        measured.samples().front().time, results.firstFlareTime, results.closest.time, results.closest.range,
        valueOf(results, *findMeasure("decoyed"))};
}

bool GhostDisplay::workOut() {
    QElapsedTimer working;
    working.start();
    for (const LoadedEngagement& engagement : parts_.engagements) {
        if (facts_.contains(engagement.id()))
            continue;
        if (working.elapsed() > kPieceMilliseconds)
            return false;
        facts_.emplace(engagement.id(), factsOf(engagement));
    }
    return true;
}

ColourLegend GhostDisplay::legendOf() const {
    if (measure_ == Measure::Decoyed)
        return {QStringLiteral("decoyed"), {{kNotDecoyed, QStringLiteral("no")}, {kDecoyed, QStringLiteral("yes")}}};
    std::vector<double> misses;
    for (const auto& [id, facts] : facts_)
        if (std::isfinite(facts.closestApproach))
            misses.push_back(facts.closestApproach);
    ColourLegend legend{QStringLiteral("closest approach"), {}};
    if (misses.empty())
        return legend;
    std::ranges::sort(misses);
    const double low = misses.front();
    const double high = misses[static_cast<std::size_t>(kHighest * static_cast<double>(misses.size() - 1))];
    const double step = (high - low) / static_cast<double>(std::size(kScale));
    for (std::size_t i = 0; i < std::size(kScale); ++i) {
        const double from = low + step * static_cast<double>(i);
        legend.entries.push_back({kScale[i], lengthText(from, parts_.unit()), from});
    }
    return legend;
}

std::size_t GhostDisplay::colourOf(const Facts& facts, const ColourLegend& legend) const {
    const double value = measure_ == Measure::Decoyed ? facts.decoyed : facts.closestApproach;
    const std::size_t unknown = legend.entries.size(); // the colour behind all others
    if (!std::isfinite(value))
        return unknown;
    if (measure_ == Measure::Decoyed)
        return value != 0.0 ? 1 : 0;
    std::size_t colour = 0;
    while (colour + 1 < legend.entries.size() && value >= legend.entries[colour + 1].from)
        ++colour;
    return legend.entries.empty() ? unknown : colour;
}

void GhostDisplay::show() {
    if (!isOn_) {
        parts_.view.setGhosts(nullptr);
        return legend_->hide();
    }
    const LoadedEngagement* const current = parts_.current.get();
    const auto set = std::make_shared<GhostSet>();
    const ColourLegend legend = legendOf();
    for (const ColourLegend::Entry& entry : legend.entries)
        set->colours.push_back(channels(entry.colour));
    set->colours.push_back(channels(kUnknown));
    const auto followed = current == nullptr ? facts_.end() : facts_.find(current->id());
    const double zero = followed == facts_.end() ? 0.0 : followed->second.timeOf(alignment_);
    for (const LoadedEngagement& engagement : parts_.engagements) {
        if (&engagement == current)
            continue;
        const auto known = facts_.find(engagement.id());
        if (known == facts_.end())
            set->ghosts[engagement.id()] = {legend.entries.size(), 0.0};
        else
            set->ghosts[engagement.id()] = {colourOf(known->second, legend), known->second.timeOf(alignment_) - zero};
    }
    const bool areAny = !set->ghosts.empty();
    parts_.view.setGhosts(areAny ? set : nullptr);
    if (areAny)
        legend_->show(legend);
    else
        legend_->hide();
}
} // namespace sorvane
