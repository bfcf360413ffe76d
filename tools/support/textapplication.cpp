// What Qt wants before it draws texts, without a display.
#include "textapplication.h"

#include <array>
#include <clocale>
#include <string>

#include <QFontDatabase>

namespace sorvane {
namespace {
// An application keeps references to its arguments, and takes out of their list those that it has used.
struct Arguments {
    char program[8] = "sorvane";
    char option[10] = "-platform";
    char platform[10] = "offscreen";
    std::array<char*, 4> values{};
    int count = 0;

    void putBack() {
        values = {program, option, platform, nullptr};
        count = 3;
    }
};

void dropMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {}
} // namespace

TextApplication::TextApplication(ApplicationMaker make) {
    if (QCoreApplication::instance() == nullptr) {
        static Arguments arguments;
        arguments.putBack();
        const QtMessageHandler before = qInstallMessageHandler(dropMessage); // of a session that there is none of
        application_ = make(arguments.count, arguments.values.data());
        qInstallMessageHandler(before);
        // The application has taken the user's locale; numbers in files keep their decimal point.
        std::setlocale(LC_NUMERIC, "C");
    }
    if (QFontDatabase::families().isEmpty())
        problem_ = "there are no fonts to draw texts with";
}

TextApplication::~TextApplication() = default;
} // namespace sorvane
