// What the colours of the ghosts stand for, over the view.
#pragma once

#include <QWidget>

#include "overlaytext.h"

namespace sorvane {
// Hidden at first. Grabbed frames, and with them pictures and movies, don't contain it; it takes no mouse events.
class GhostLegend : public QWidget {
public:
    explicit GhostLegend(QWidget& view);

    void show(ColourLegend legend);
    const ColourLegend& legend() const { return legend_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void layOut();

    QWidget& view_;
    ColourLegend legend_;
};
} // namespace sorvane
