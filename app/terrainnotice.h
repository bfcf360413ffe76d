// Loads terrain beside the window's work, and says over the view how far it has come.
#pragma once

#include "viewlabel.h"

class AircraftWidget;
class QTimer;

namespace sorvane {
// At the right end of the line of notices. While one is there, the view draws no terrain that is not loaded; pictures
// and movies have it all the same.
class TerrainNotice : public ViewLabel {
public:
    explicit TerrainNotice(AircraftWidget& view);

protected:
    void layOut() override;

private:
    void goOn();

    AircraftWidget& view_;
    QTimer* next_;
};
} // namespace sorvane
