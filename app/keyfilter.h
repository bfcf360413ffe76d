// Catches the keys of the key table, where no control uses them itself.
#pragma once

#include <functional>

#include <QObject>

#include "keytable.h"

class QWidget;
class QKeyEvent;

namespace sorvane {
// A key that the focused control does not use travels up to its window, where the filter takes it; dialogs keep
// theirs by being windows of their own, and while a menu is open every key is the menu's. Some controls swallow keys
// that they have no use for: a time box letters, a button the arrows (it moves the focus). They are filtered
// themselves. Space is the clock's even on a focused button, which Return presses.
class KeyFilter : public QObject {
public:
    using Run = std::function<void(KeyCommand)>;

    // Filters `window` and the time boxes and buttons in it for as long as the window lives.
    KeyFilter(QWidget& window, Run run);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static bool press(QObject& watched, const QKeyEvent& event);
    bool handle(const QObject& watched, const QKeyEvent& event);

    Run run_;
};
} // namespace sorvane
