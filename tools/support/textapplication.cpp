// What Qt wants before it draws texts, without a display.
#include "textapplication.h"

#include <clocale>
#include <string>

#include <QFontDatabase>

namespace sorvane {
namespace {
// An application keeps references to its arguments.
struct Arguments {
    char program[8] = "sorvane";
    char option[10] = "-platform";
    char platform[10] = "offscreen";
    char* values[4] = {program, option, platform, nullptr};
    int count = 3;
};

void dropMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {}
} // namespace

TextApplication::TextApplication(ApplicationMaker make) {
    if (QCoreApplication::instance() == nullptr) {
        static Arguments arguments;
        arguments = Arguments();
        const QtMessageHandler before = qInstallMessageHandler(dropMessage); // of a session that there is none of
        application_ = make(arguments.count, arguments.values);
        qInstallMessageHandler(before);
        // The application has taken the user's locale; numbers in files keep their decimal point.
        std::setlocale(LC_NUMERIC, "C");
    }
    if (QFontDatabase::families().isEmpty())
        problem_ = "there are no fonts to draw texts with";
}

TextApplication::~TextApplication() = default;
} // namespace sorvane
