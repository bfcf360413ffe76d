// Catches the keys of the key table, where no control uses them itself.
#include "keyfilter.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QKeyEvent>

namespace sorvane {
namespace {
bool isArrow(int key) {
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

// Whether a control has a use of its own for one of the table's keys.
bool usesKey(const QObject& control, const QKeyEvent& event) {
    const int key = event.key();
    if (qobject_cast<const QAbstractSpinBox*>(&control) == nullptr)
        return false;
    const bool isOfTheNumber = key == Qt::Key_Home || key == Qt::Key_End || key == Qt::Key_PageUp ||
                               key == Qt::Key_PageDown || key == Qt::Key_Delete;
    return isOfTheNumber || isArrow(key) || (key >= Qt::Key_0 && key <= Qt::Key_9);
}
} // namespace

KeyFilter::KeyFilter(QWidget& window, Run run) : QObject(&window), run_(std::move(run)) {
    window.installEventFilter(this);
    for (QAbstractButton* const button : window.findChildren<QAbstractButton*>())
        button->installEventFilter(this);
    for (QAbstractSpinBox* const box : window.findChildren<QAbstractSpinBox*>())
        box->installEventFilter(this); // its line hands it all keys
}

bool KeyFilter::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (press(*watched, key) || handle(*watched, key))
            return true;
    }
    return QObject::eventFilter(watched, event);
}

bool KeyFilter::press(QObject& watched, const QKeyEvent& event) {
    auto* const button = qobject_cast<QAbstractButton*>(&watched);
    if (button == nullptr || (event.key() != Qt::Key_Return && event.key() != Qt::Key_Enter))
        return false;
    if (!event.isAutoRepeat())
        button->click();
    return true;
}

bool KeyFilter::handle(const QObject& watched, const QKeyEvent& event) {
    // An open menu hands what it has no use for to the menu bar, from where it would come up here.
    if (QApplication::activePopupWidget() != nullptr)
        return false;
    const KeyRow* const row = keyRowOf(event.keyCombination());
    if (row == nullptr || usesKey(watched, event))
        return false;
    if (row->repeats || !event.isAutoRepeat())
        run_(row->command);
    return true;
}
} // namespace sorvane
