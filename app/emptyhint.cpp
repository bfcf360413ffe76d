// What an empty view says.
#include "emptyhint.h"

#include <QEvent>

#include "engagementlist.h"

namespace sorvane {
EmptyHint::EmptyHint(QWidget& view, const EngagementList& engagements)
    : QLabel(QStringLiteral("Drop trajectory files here\nF1 lists the keys"), &view) {
    setObjectName(QStringLiteral("emptyHint"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAlignment(Qt::AlignCenter);
    setStyleSheet(QStringLiteral("color: #808080; background: transparent;"));
    view.installEventFilter(this);
    const auto follow = [this, &engagements] {
        setVisible(engagements.isEmpty());
    };
    connect(&engagements, &EngagementList::added, this, follow);
    connect(&engagements, &EngagementList::removed, this, follow);
}

bool EmptyHint::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) {
        // The grid's horizon runs through the middle.
        const int half = parentWidget()->height() / 2;
        setGeometry(0, half, parentWidget()->width(), half);
    }
    return QLabel::eventFilter(watched, event);
}
} // namespace sorvane
