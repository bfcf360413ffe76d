// What the mouse does on a plot.
#include "plotmouse.h"

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QMouseEvent>
#include <QRubberBand>
#include <QWheelEvent>

#include "plotoverlay.h"
#include "stripplot.h"

namespace sorvane {
namespace {
constexpr double kZoomPerNotch = 1.25;
constexpr double kDegreesPerNotch = 120.0; // in eighths
} // namespace

PlotMouse::PlotMouse(StripPlot& plot, PlotOverlay& overlay, Actions actions)
    : plot_(plot), overlay_(overlay), actions_(std::move(actions)),
      band_(new QRubberBand(QRubberBand::Rectangle, &plot)) {
    plot_.setMouseTracking(true);
    plot_.installEventFilter(this);
}

bool PlotMouse::eventFilter(QObject* watched, QEvent* event) {
    if (plot_.stripCount() == 0)
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        press(static_cast<const QMouseEvent&>(*event));
        return true;
    case QEvent::MouseMove:
        move(static_cast<const QMouseEvent&>(*event));
        return true;
    case QEvent::MouseButtonRelease:
        release(static_cast<const QMouseEvent&>(*event));
        return true;
    case QEvent::MouseButtonDblClick:
        if (static_cast<const QMouseEvent&>(*event).button() == Qt::LeftButton)
            plot_.showAllTimes();
        return true;
    case QEvent::Wheel:
        zoom(static_cast<const QWheelEvent&>(*event));
        return true;
    case QEvent::Leave:
        overlay_.setPointer(std::nullopt);
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void PlotMouse::press(const QMouseEvent& event) {
    pressed_ = event.position().toPoint();
    pressedTime_ = plot_.timeAt(pressed_.x());
    movedStrip_.reset();
    if (event.button() != Qt::LeftButton)
        return;
    if (pressed_.x() < plot_.strip(0).left())
        movedStrip_ = plot_.stripAt(pressed_);
    else if (event.modifiers().testFlag(Qt::ShiftModifier))
        overlay_.setCursor(PlotOverlay::A, pressedTime_);
    else if (event.modifiers().testFlag(Qt::ControlModifier))
        overlay_.setCursor(PlotOverlay::B, pressedTime_);
    else
        actions_.goTo(pressedTime_);
}

void PlotMouse::move(const QMouseEvent& event) {
    const QPoint place = event.position().toPoint();
    const bool isOverStrips = place.x() >= plot_.strip(0).left() && place.x() <= plot_.strip(0).right();
    overlay_.setPointer(isOverStrips ? std::optional(plot_.timeAt(place.x())) : std::nullopt);
    if (event.buttons().testFlag(Qt::LeftButton) && !movedStrip_ &&
        !(event.modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)))
        actions_.goTo(plot_.timeAt(place.x()));
    if (event.buttons().testFlag(Qt::RightButton)) {
        const QRect& strip = plot_.strip(0).rect();
        const int bottom = plot_.strip(plot_.stripCount() - 1).bottom();
        const auto [left, right] = std::minmax(
            {std::clamp(pressed_.x(), strip.left(), strip.right()),
             std::clamp(place.x(), strip.left(), strip.right())});
        band_->setGeometry(left, strip.top(), right - left + 1, bottom - strip.top());
        band_->setVisible((place - pressed_).manhattanLength() >= QApplication::startDragDistance());
    }
    if (event.buttons().testFlag(Qt::MiddleButton)) {
        const double by = pressedTime_ - plot_.timeAt(place.x());
        plot_.setTimes({plot_.times().begin + by, plot_.times().end + by});
    }
}

void PlotMouse::release(const QMouseEvent& event) {
    const QPoint place = event.position().toPoint();
    if (movedStrip_) {
        const std::optional<std::size_t> over = plot_.stripAt(place);
        if (over && over != movedStrip_)
            actions_.moveStrip(*movedStrip_, *over);
        movedStrip_.reset();
    }
    if (event.button() != Qt::RightButton)
        return;
    if (band_->isVisible()) {
        const QRect chosen = band_->geometry();
        band_->hide();
        plot_.setTimes({plot_.timeAt(chosen.left()), plot_.timeAt(chosen.right())});
    } else {
        actions_.openMenu(event.globalPosition().toPoint(), plot_.stripAt(place));
    }
}

void PlotMouse::zoom(const QWheelEvent& event) {
    const double factor = std::pow(kZoomPerNotch, -event.angleDelta().y() / kDegreesPerNotch);
    const double about = plot_.timeAt(event.position().x());
    const TimeRange& shown = plot_.times();
    plot_.setTimes({about + (shown.begin - about) * factor, about + (shown.end - about) * factor});
}
} // namespace sorvane
