// A line of text, or some, over the view.
#include "viewlabel.h"

#include <QEvent>

namespace sorvane {
ViewLabel::ViewLabel(QWidget& view, const QString& name) : QLabel(&view) {
    setObjectName(name);
    setTextFormat(Qt::PlainText);
    setMargin(kViewMargin / 2);
    hide();
    view.installEventFilter(this);
}

bool ViewLabel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize && isVisible())
        layOut();
    return QLabel::eventFilter(watched, event);
}

void ViewLabel::setColour(QLatin1String colour) {
    // A recording shows its mark with every frame; a style sheet is too dear for that.
    if (colour_ == colour)
        return;
    colour_ = colour;
    setStyleSheet(QStringLiteral("color: %1; background: rgba(0, 0, 0, 190);").arg(colour_));
}

void ViewLabel::showText(const QString& text) {
    setText(text);
    layOut();
    setVisible(!text.isEmpty());
}

void ViewLabel::layOut() {
    const int room = parentWidget()->width() - 2 * kViewMargin;
    setWordWrap(false);
    const QSize unwrapped = sizeHint();
    setWordWrap(unwrapped.width() > room);
    resize(wordWrap() ? QSize(room, heightForWidth(room)) : unwrapped);
}
} // namespace sorvane
