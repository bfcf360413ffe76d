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
    if (watched == &window_ && event->type() == QEvent::Show) {
        window_.removeEventFilter(this);
        arrange();
    }
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
}
} // namespace sorvane
