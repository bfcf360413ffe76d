// Keeps the time box from taking Ctrl+C, which closes the window.
#include "copykeyfilter.h"

#include <QAbstractSpinBox>
#include <QKeyEvent>
#include <QLineEdit>

namespace sorvane {
void CopyKeyFilter::installOn(QAbstractSpinBox& box) {
    auto* const filter = new CopyKeyFilter(&box);
    box.installEventFilter(filter);
    if (auto* const edit = box.findChild<QLineEdit*>())
        edit->installEventFilter(filter);
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
