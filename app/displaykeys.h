// Keys that choose how the view shows what it shows.
#pragma once

#include "measuretext.h"
#include "preferences.h"

class AircraftWidget;

namespace sorvane {
class BodyNames;
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

    LengthUnit unit() const { return unit_; }

    void toggleNames();
    void toggleReticles();
    void cycleUnit();
    // Of the read-out, which shows then.
    void cycleCorner();
    void cycleAntialiasing();

private:
    DisplayKeysParts parts_;
    Preferences preferences_;
    LengthUnit unit_ = LengthUnit::Unstated;
};
} // namespace sorvane
