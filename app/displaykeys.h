// Keys that choose how the view shows what it shows.
#pragma once

#include <QStringList>

#include "keytable.h"
#include "measuretext.h"
#include "preferences.h"

class AircraftWidget;

namespace sorvane {
class BodyNames;
class PointerWatch;
class ViewNotice;
class ViewReadout;

// What the keys work on. Nothing here is owned.
struct DisplayKeysParts {
    AircraftWidget& view;
    ViewReadout& readout;
    BodyNames& names;
    ViewNotice& notice;
};

class DisplayKeys {
public:
    // Takes up the choices of the last session: unit, corner and anti-aliasing.
    explicit DisplayKeys(const DisplayKeysParts& parts);
    DisplayKeys(const DisplayKeys&) = delete;
    DisplayKeys& operator=(const DisplayKeys&) = delete;

    LengthUnit unit() const { return unit_; }

    void toggleNames();
    void toggleReticles();
    void cycleUnit();
    // Of the read-out, which shows then.
    void cycleCorner();
    void cycleAntialiasing();
    // What the colours mean in radiance, by one of the keys for it.
    void changeScale(KeyCommand command);

    // What shows under the pointer, while the view has a scale.
    QStringList pointedLines() const;

private:
    void tellUnit();
    bool hasScale() const;

    DisplayKeysParts parts_;
    PointerWatch* pointer_; // of the view's children
    Preferences preferences_;
    LengthUnit unit_ = LengthUnit::Unstated;
};
} // namespace sorvane
