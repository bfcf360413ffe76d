// Keys that choose how the view shows what it shows.
#include "displaykeys.h"

#include <algorithm>

#include "aircraftwidget.h"
#include "bodynames.h"
#include "pointerwatch.h"
#include "readout.h"
#include "scalekeys.h"
#include "viewnotice.h"

namespace sorvane {
namespace {
constexpr const char* kUnit = "lengthUnit";
constexpr const char* kCorner = "readoutCorner";
constexpr const char* kSamples = "antialiasingSamples";
constexpr int kMostSamples = 64;

template <class Choice> Choice next(Choice choice, Choice last) {
    return choice == last ? Choice{} : static_cast<Choice>(static_cast<int>(choice) + 1);
}
} // namespace

DisplayKeys::DisplayKeys(const DisplayKeysParts& parts)
    : parts_(parts), pointer_(new PointerWatch(
                         parts.view,
                         [this] {
                             if (hasScale())
                                 parts_.readout.refresh();
                         })),
      unit_(static_cast<LengthUnit>(preferences_.number(kUnit, static_cast<int>(LengthUnit::Metres)).value_or(0))) {
    if (const std::optional<int> corner = preferences_.number(kCorner, static_cast<int>(ReadoutCorner::UpperLeft)))
        parts_.readout.setCorner(static_cast<ReadoutCorner>(*corner));
    if (const std::optional<int> samples = preferences_.number(kSamples, kMostSamples))
        parts_.view.setSamples(*samples);
    tellUnit();
}

void DisplayKeys::toggleNames() {
    parts_.names.setVisible(!parts_.names.isVisible());
}

void DisplayKeys::toggleReticles() {
    AircraftWidget& view = parts_.view;
    view.setSingleReticle(!view.hasSingleReticle());
    parts_.notice.notify(
        view.hasSingleReticle() ? QStringLiteral("Gyro view: the circle of the followed engagement only")
                                : QStringLiteral("Gyro view: the circles of all engagements"));
}

void DisplayKeys::cycleUnit() {
    unit_ = next(unit_, LengthUnit::Metres);
    preferences_.setNumber(kUnit, static_cast<int>(unit_));
    tellUnit();
    parts_.readout.refresh();
    parts_.notice.notify(
        unit_ == LengthUnit::Unstated ? QStringLiteral("Lengths are in the trajectory's own units")
                                      : QStringLiteral("Lengths are in %1").arg(unitSymbol(unit_)));
}

void DisplayKeys::tellUnit() {
    FlareUnits units = parts_.view.flareUnits();
    units.centimetres = unit_ == LengthUnit::Feet ? kCentimetresPerFoot : kCentimetresPerMetre;
    parts_.view.setFlareUnits(units);
}

void DisplayKeys::changeScale(KeyCommand command) {
    AircraftWidget& view = parts_.view;
    if (const std::optional<PictureScale> scale = scaleAfter(command, view.scale(), view.scaleEnds())) {
        view.setScale(*scale);
        parts_.notice.notify(scaleText(*scale));
    }
}

bool DisplayKeys::hasScale() const {
    return parts_.view.scale() != PictureScale();
}

QStringList DisplayKeys::pointedLines() const {
    return hasScale() ? pointer_->lines() : QStringList();
}

void DisplayKeys::cycleCorner() {
    ViewReadout& readout = parts_.readout;
    if (readout.isHidden())
        return readout.toggle();
    readout.setCorner(next(readout.corner(), ReadoutCorner::UpperLeft));
    preferences_.setNumber(kCorner, static_cast<int>(readout.corner()));
}

void DisplayKeys::cycleAntialiasing() {
    AircraftWidget& view = parts_.view;
    const std::vector<int>& choices = view.sampleChoices();
    if (choices.size() < 2)
        return parts_.notice.notify(QStringLiteral("Anti-aliasing: these graphics have none"));
    const auto more = std::ranges::upper_bound(choices, view.samples());
    view.setSamples(more == choices.end() ? 0 : *more);
    preferences_.setNumber(kSamples, view.samples());
    parts_.notice.notify(
        view.samples() == 0 ? QStringLiteral("Anti-aliasing off")
                            : QStringLiteral("Anti-aliasing: %1 samples a pixel").arg(view.samples()));
}
} // namespace sorvane
