// Names beside the bodies in the view.
#pragma once

#include <memory>
#include <vector>

#include <QHash>
#include <QWidget>

#include "bodylabels.h"
#include "overlaytext.h"

class AircraftWidget;
class QTimer;

namespace sorvane {
class EngagementList;

// Lies over the whole view, hidden at first. Grabbed frames, and with them pictures and movies, don't contain it; it
// takes no mouse events, and watches the view's only while it is shown.
class BodyNames : public QWidget {
public:
    BodyNames(AircraftWidget& view, const EngagementList& engagements);

    // The time has changed. The view paints anew by itself; said before it does, the labels come with the same frame.
    void refresh();

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    // What is to be painted: the labels, and the places of other texts, which they keep clear of.
    struct Content {
        std::vector<BodyLabel> labels;
        std::vector<QRectF> occupied;
        bool operator==(const Content&) const = default;
    };
    Content content();
    QString nameOf(EngagementId id);

    AircraftWidget& view_;
    const EngagementList& engagements_;
    QTimer* afterFrame_;
    Content painted_;
    std::unique_ptr<LabelPainter> painter_;
    double painterRatio_ = 1.0; // what it paints for
    QHash<EngagementId, QString> names_;
};
} // namespace sorvane
