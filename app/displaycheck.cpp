// Ends the program with a word instead of a crash where it has no display to open its window on.
#include "displaycheck.h"

#include <cstdio>
#include <cstdlib>

#include <QString>
#include <QStringList>

namespace sorvane {
namespace {
QStringList withheld; // what is said before it is known whether there is a display

void hear(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
    if (type != QtFatalMsg) {
        withheld << text;
        return;
    }
    std::fputs(
        "new_sorvane: there is no display to open the window on; \"sorvane render\" makes pictures and movies "
        "without one\n",
        stderr);
    std::fflush(stderr);
    std::_Exit(EXIT_FAILURE); // nothing has been made that would have to be ended
}
} // namespace

DisplayCheck::DisplayCheck() : before_(qInstallMessageHandler(hear)) {}

DisplayCheck::~DisplayCheck() {
    qInstallMessageHandler(before_);
    for (const QString& text : withheld)
        qWarning("%s", qUtf8Printable(text));
    withheld.clear();
}
} // namespace sorvane
