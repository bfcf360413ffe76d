// Where the pointer is over the view, and what shows there.
#pragma once

#include <functional>
#include <optional>

#include <QObject>
#include <QPointF>
#include <QStringList>

class AircraftWidget;

namespace sorvane {
class PointerWatch : public QObject {
public:
    // Calls `moved` when the pointer has moved over the view or left it. A child of the view.
    PointerWatch(AircraftWidget& view, std::function<void()> moved);

    // What the read-out says of the place under the pointer; nothing when it is elsewhere.
    QStringList lines() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    AircraftWidget& view_;
    std::function<void()> moved_;
    std::optional<QPointF> place_;
};
} // namespace sorvane
