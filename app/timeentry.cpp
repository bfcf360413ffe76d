// Typing a time into the time box.
#include "timeentry.h"

#include <QDoubleSpinBox>
#include <QKeyEvent>
#include <QLineEdit>

namespace sorvane {
void TimeEntry::installOn(QDoubleSpinBox& box, QWidget& view) {
    box.setLocale(QLocale::c());
    box.installEventFilter(new TimeEntry(box, view));
}

TimeEntry::TimeEntry(QDoubleSpinBox& box, QWidget& view) : QObject(&box), box_(box), view_(view) {}

bool TimeEntry::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter) {
            box_.interpretText();
            view_.setFocus();
            return true;
        }
        if (key.text() == QStringLiteral(",")) {
            if (auto* const edit = box_.findChild<QLineEdit*>())
                edit->insert(QStringLiteral("."));
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
} // namespace sorvane
