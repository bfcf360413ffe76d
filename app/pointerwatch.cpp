// Where the pointer is over the view, and what shows there.
#include "pointerwatch.h"

#include <QMouseEvent>

#include "aircraftwidget.h"
#include "pointedtext.h"

namespace sorvane {
PointerWatch::PointerWatch(AircraftWidget& view, std::function<void()> moved)
    : QObject(&view), view_(view), moved_(std::move(moved)) {
    view.setMouseTracking(true);
    view.installEventFilter(this);
}

QStringList PointerWatch::lines() const {
    if (!place_)
        return {};
    const std::optional<PointedRadiance> pointed = view_.radianceAt(*place_);
    return pointed ? pointedLines(*pointed) : QStringList();
}

bool PointerWatch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::Leave) {
        place_.reset();
        if (event->type() == QEvent::MouseMove)
            place_ = static_cast<const QMouseEvent*>(event)->position();
        moved_();
    }
    return QObject::eventFilter(watched, event);
}
} // namespace sorvane
