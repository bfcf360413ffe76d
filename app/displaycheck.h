// Ends the program with a word instead of a crash where it has no display to open its window on.
#pragma once

#include <QtGlobal>

namespace sorvane {
// While one lives, an application that is made and finds no display ends the process: one line on standard error, which
// names what needs none, and status 1. What else is said meanwhile is printed as ever.
class DisplayCheck {
public:
    DisplayCheck();
    ~DisplayCheck();
    DisplayCheck(const DisplayCheck&) = delete;
    DisplayCheck& operator=(const DisplayCheck&) = delete;

private:
    QtMessageHandler before_;
};
} // namespace sorvane
