// What the colours of the ghosts stand for, over the view.
#include "ghostlegend.h"

#include <QEvent>
#include <QFontInfo>
#include <QPainter>

#include "viewlabel.h"

namespace sorvane {
GhostLegend::GhostLegend(QWidget& view) : QWidget(&view), view_(view) {
    setObjectName(QStringLiteral("ghostLegend"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    view.installEventFilter(this);
}

void GhostLegend::show(ColourLegend legend) {
    legend_ = std::move(legend);
    layOut();
    setVisible(true);
    update();
}

bool GhostLegend::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && isVisible())
        layOut();
    return QWidget::eventFilter(watched, event);
}

void GhostLegend::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintColourLegend(painter, rect(), legend_, QFontInfo(font()).pixelSize());
}

// At the right edge, above the middle: the corners are the read-out's.
void GhostLegend::layOut() {
    const QSize size = colourLegendSize(legend_, QFontInfo(font()).pixelSize()).toSize();
    setGeometry(QRect(QPoint(view_.width() - kViewMargin - size.width(), (view_.height() - size.height()) / 2), size));
}
} // namespace sorvane
