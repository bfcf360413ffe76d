// How a loader of this library reports a fault: printError with the file and line of the call.
#include "fail.h"

#include <cstdarg>

#include "formattedtext.h"
#include "printerror.h"

namespace sorvane {
bool fail(FailingFunction function, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = formattedText(format, arguments);
    va_end(arguments);
    printError(function.file, function.name, function.line, "%s", 1, text.c_str());
    return false;
}
} // namespace sorvane
