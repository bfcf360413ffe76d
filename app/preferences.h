// What the viewer keeps from one session to the next.
#pragma once

#include <optional>

#include <QSettings>

class QWidget;

namespace sorvane {
// The user's choices, by name, where QSettings keeps them. With the environment variable SORVANE_NO_SETTINGS set to 1
// nothing is read or written, and every session begins alike.
class Preferences {
public:
    Preferences();

    // A number from 0 to `most`; nothing where none is kept, or another one.
    std::optional<int> number(const char* name, int most) const;
    void setNumber(const char* name, int value);

    // Where a window stood and how large it was, by its object name. Without that it stays as it is.
    void restoreGeometry(QWidget& window) const;
    void keepGeometry(const QWidget& window);

private:
    std::optional<QSettings> settings_;
};
} // namespace sorvane
