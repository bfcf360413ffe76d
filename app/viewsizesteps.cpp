// Keeps the view at sizes that a movie can have.
#include "viewsizesteps.h"

#include <QEvent>
#include <QLayout>
#include <QMainWindow>

#include "qvideoencoder.h"

namespace sorvane {
ViewSizeSteps::ViewSizeSteps(QMainWindow& window, QWidget& view, QWidget& controlRow)
    : QObject(&window), window_(window), view_(view), controlRow_(controlRow) {
    window_.installEventFilter(this);
}

bool ViewSizeSteps::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && event->type() == QEvent::Show && margins_.isNull())
        arrange();
    // A window that ends sends events, too, and can't be asked for its middle any more.
    const bool isOtherSize = watched == centre_ && event->type() == QEvent::Resize;
    const bool isOtherState = watched == &window_ && event->type() == QEvent::WindowStateChange;
    if ((isOtherSize || isOtherState) && !margins_.isNull())
        fitMargins();
    return QObject::eventFilter(watched, event);
}

void ViewSizeSteps::arrange() {
    constexpr int kStep = QVideoEncoder::kSizeStep;
    QLayout& layout = *window_.centralWidget()->layout();
    window_.layout()->activate();
    layout.activate();
    controlRow_.setMinimumHeight(controlRow_.height() + view_.height() % kStep);
    layout.activate();
    window_.setSizeIncrement(kStep, kStep);
    window_.setBaseSize(window_.size() - view_.size());
    margins_ = layout.contentsMargins();
    aroundView_ = window_.centralWidget()->size() - view_.size();
    centre_ = window_.centralWidget();
    window_.centralWidget()->installEventFilter(this);
}

void ViewSizeSteps::fitMargins() {
    constexpr int kStep = QVideoEncoder::kSizeStep;
    QWidget& centre = *window_.centralWidget();
    const QSize room = centre.size() - aroundView_;
    const bool isFilling = window_.isMaximized() || window_.isFullScreen();
    const QSize needless = isFilling ? QSize(room.width() % kStep, room.height() % kStep) : QSize(0, 0);
    const int left = needless.width() / 2;
    const int top = needless.height() / 2;
    centre.layout()->setContentsMargins(
        margins_ + QMargins(left, top, needless.width() - left, needless.height() - top));
}
} // namespace sorvane
