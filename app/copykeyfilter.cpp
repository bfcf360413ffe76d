// Keeps the time box from taking Ctrl+C, which closes the window.
#include "copykeyfilter.h"

#include <QAbstractSpinBox>
#include <QKeyEvent>

namespace sorvane {
void CopyKeyFilter::installOn(QAbstractSpinBox& box) {
    box.installEventFilter(new CopyKeyFilter(&box));
}

bool CopyKeyFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        // Swallowed unaccepted: nobody overrides the shortcut, so the window's action gets it.
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}
} // namespace sorvane
