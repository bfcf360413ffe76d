// Shows that the view has the keyboard.
#include "focusframe.h"

#include <QFocusEvent>
#include <QPainter>

namespace sorvane {
namespace {
constexpr int kWidth = 2; // pixels

bool isByKeyboard(const QFocusEvent& event) {
    return event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason;
}
} // namespace

FocusFrame::FocusFrame(QWidget& framed) : QWidget(&framed), framed_(framed) {
    setObjectName(QStringLiteral("focusFrame"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    framed_.installEventFilter(this);
}

bool FocusFrame::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        setGeometry(framed_.rect());
        setVisible(isByKeyboard(static_cast<const QFocusEvent&>(*event)));
    } else if (event->type() == QEvent::FocusOut) {
        hide();
    } else if (event->type() == QEvent::Resize) {
        setGeometry(framed_.rect());
    }
    return QWidget::eventFilter(watched, event);
}

void FocusFrame::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    QPen pen(palette().color(QPalette::Highlight), kWidth);
    pen.setJoinStyle(Qt::MiterJoin);
    painter.setPen(pen);
    painter.drawRect(rect().adjusted(kWidth / 2, kWidth / 2, -kWidth / 2, -kWidth / 2));
}
} // namespace sorvane
